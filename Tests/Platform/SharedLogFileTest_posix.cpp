#include <Platform/SharedLogFile.h>

#include "Platform/LockedFile.h"
#include "Platform/SystemCalls.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using Platform::SharedLogFile;

TEST(SharedLogFile, TextIsAddedAtTheEnd) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", "before\n"), "RigbakeTestMutex");
    EXPECT_EQ(folder.ReadFile("log"), "before\n");
    log.Append("one\n");
    log.Append(std::string("t\0o\n", 4));
    EXPECT_EQ(folder.ReadFile("log"), std::string("before\none\nt\0o\n", 15));
}

TEST(SharedLogFile, AnAdditionWaitsForItsTurn) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", ""), "RigbakeTestMutex");
    const int other = open(folder.Path("log").c_str(), O_RDWR);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    std::atomic<bool> done = false;
    std::thread adder([&] {
        log.Append("mine");
        done = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(done);
    EXPECT_EQ(folder.ReadFile("log"), "");
    close(other);
    adder.join();
    EXPECT_EQ(folder.ReadFile("log"), "mine");
}

TEST(SharedLogFile, WhoKeepsTheLockForEverIsWaitedForOnce) {
    const TemporaryFolder folder;
    const SharedLogFile log(folder.WriteFile("log", "before\n"), "RigbakeTestMutex");
    const LockedFile reader(folder.Path("log"));
    ASSERT_TRUE(reader.IsLocked());
    SystemCalls calls;
    long nanoseconds = 0;
    calls.inFrontOfPausing = [&](const timespec& pause) {
        nanoseconds += pause.tv_sec * 1'000'000'000 + pause.tv_nsec;
        return EINTR;
    };
    log.Append("one\n");
    EXPECT_EQ(nanoseconds, 500'000'000);
    log.Append("two\n");
    EXPECT_EQ(nanoseconds, 500'000'000);
    EXPECT_EQ(folder.ReadFile("log"), "before\none\ntwo\n");
}

TEST(SharedLogFile, AFileSystemWithoutLocksTakesTheText) {
    const TemporaryFolder folder;
    SystemCalls calls;
    calls.inFrontOfLocking = [] { return ENOLCK; };
    SharedLogFile(folder.Path("log"), "RigbakeTestMutex").Append("text");
    EXPECT_EQ(folder.ReadFile("log"), "text");
}

TEST(SharedLogFile, AFileThatCannotBeOpenedIsPassedOver) {
    const TemporaryFolder folder;
    SharedLogFile(folder.Path(), "RigbakeTestMutex").Append("text");
    SharedLogFile("", "RigbakeTestMutex").Append("text");
    SharedLogFile(folder.Path("no/such/folder"), "RigbakeTestMutex").Append("text");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
