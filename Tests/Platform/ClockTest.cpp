#include <Platform/Clock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

namespace {

TEST(Clock, CountsMillisecondsOfTheWall) {
    const std::uint32_t before = Platform::ClockMilliseconds();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const std::uint32_t passed = Platform::ClockMilliseconds() - before;
    EXPECT_GE(passed, 29u);
    EXPECT_LT(passed, 30000u);
}

TEST(Clock, TellsTheTimeOfDay) {
    const std::string text = Platform::LocalTimeText();
    ASSERT_EQ(text.size(), 8u);
    EXPECT_EQ(text[2], ':');
    EXPECT_EQ(text[5], ':');
    EXPECT_LT(std::stoi(text.substr(0, 2)), 24);
    EXPECT_LT(std::stoi(text.substr(3, 2)), 60);
    EXPECT_LE(std::stoi(text.substr(6, 2)), 60);
}

}  // namespace
