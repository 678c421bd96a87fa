#include <Platform/WaitableTimer.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <thread>

namespace {

using Platform::WaitableTimer;

constexpr const char* kName = "RigbakeTestTimer";

TEST(WaitableTimer, FiresAfterItsTimeAndStaysFired) {
    WaitableTimer timer;
    ASSERT_EQ(timer.Create(kName), 0u);
    EXPECT_FALSE(timer.HasFired());
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(timer.Set(60), 0u);
    EXPECT_FALSE(timer.HasFired());
    while (!timer.HasFired()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    // The system's clock moves in steps of up to 16 milliseconds.
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(40));
    EXPECT_TRUE(timer.HasFired());
}

TEST(WaitableTimer, SecondsAreSecondsAndNoTimeIsAtOnce) {
    WaitableTimer timer;
    ASSERT_EQ(timer.Create(kName), 0u);
    ASSERT_EQ(timer.Set(2000), 0u);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_FALSE(timer.HasFired());
    ASSERT_EQ(timer.Set(0), 0u);
    while (!timer.HasFired()) std::this_thread::yield();
}

TEST(WaitableTimer, WhatTheSystemRefusesIsTold) {
    const HANDLE other = CreateMutexA(nullptr, FALSE, "RigbakeTestOther");
    WaitableTimer timer;
    EXPECT_EQ(timer.Set(1), static_cast<std::uint32_t>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(timer.Create("RigbakeTestOther"), static_cast<std::uint32_t>(ERROR_INVALID_HANDLE));
    CloseHandle(other);
}

}  // namespace
