#include "Thread_posix.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <limits>
#include <memory>

namespace {

using Platform::Thread;

/// More than any other thread has: the C library uses stacks again.
constexpr std::size_t kStack = 40u << 20;

TEST(Thread, RunsTheActionOnAStackAtLeastOfThatSize) {
    std::size_t size = 0;
    Thread thread;
    ASSERT_EQ(thread.Start(kStack + 1,
                           [&size] {
                               pthread_attr_t attributes;
                               pthread_getattr_np(pthread_self(), &attributes);
                               pthread_attr_getstacksize(&attributes, &size);
                               pthread_attr_destroy(&attributes);
                           }),
              0);
    thread.Join();
    EXPECT_GT(size, kStack);
}

TEST(Thread, WhatItHoldsIsGivenBackAtItsEnd) {
    const auto held = std::make_shared<int>(0);
    std::atomic<bool> mayEnd = false;
    Thread thread;
    ASSERT_EQ(thread.Start(0, [held, &mayEnd] { mayEnd.wait(false); }), 0);
    EXPECT_EQ(held.use_count(), 2);
    mayEnd = true;
    mayEnd.notify_all();
    thread.Join();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Thread, WithoutMemoryForItsStackThatIsTheError) {
    const auto held = std::make_shared<int>(0);
    Thread thread;
    EXPECT_EQ(thread.Start(std::numeric_limits<std::size_t>::max() / 4, [held] {}), ENOMEM);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(ThreadDeathTest, TooManyThreadsAreAnotherError) {
    const auto start = [] {
        // The superuser may have any number.
        if (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(99);
        const rlimit none{1, 1};
        setrlimit(RLIMIT_NPROC, &none);
        _exit(Thread().Start(kStack, [] {}));
    };
    EXPECT_EXIT(start(), testing::ExitedWithCode(EAGAIN), "");
}

}  // namespace
