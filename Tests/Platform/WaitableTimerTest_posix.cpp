#include <Platform/WaitableTimer.h>

#include "Platform/FewDescriptors.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace {

using Platform::WaitableTimer;

TEST(WaitableTimer, FiresAfterItsTimeAndStaysFired) {
    WaitableTimer timer;
    ASSERT_EQ(timer.Create("RigbakeTestTimer"), 0u);
    EXPECT_FALSE(timer.HasFired());
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(timer.Set(30), 0u);
    EXPECT_FALSE(timer.HasFired());
    while (!timer.HasFired()) std::this_thread::yield();
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(30));
    EXPECT_TRUE(timer.HasFired());
}

TEST(WaitableTimer, SecondsAreSecondsAndNoTimeIsAtOnce) {
    WaitableTimer timer;
    ASSERT_EQ(timer.Create("RigbakeTestTimer"), 0u);
    ASSERT_EQ(timer.Set(2000), 0u);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_FALSE(timer.HasFired());
    ASSERT_EQ(timer.Set(0), 0u);
    while (!timer.HasFired()) std::this_thread::yield();
}

TEST(WaitableTimer, ATimerThatCannotBeAskedHasFired) {
    WaitableTimer timer;
    ASSERT_EQ(timer.Create("RigbakeTestTimer"), 0u);
    ASSERT_EQ(timer.Set(3'600'000), 0u);
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    // The system looks at no more descriptors at once than a process may have.
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const bool hasFired = timer.HasFired();
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(hasFired);
    EXPECT_FALSE(timer.HasFired());
}

TEST(WaitableTimer, WhatTheSystemRefusesIsTold) {
    WaitableTimer timer;
    EXPECT_EQ(timer.Set(1), static_cast<std::uint32_t>(EBADF));
    const FewDescriptors none(0);
    EXPECT_EQ(timer.Create("RigbakeTestTimer"), static_cast<std::uint32_t>(EMFILE));
}

}  // namespace
