#include <Platform/Clock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <regex>
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
    EXPECT_TRUE(std::regex_match(Platform::LocalTimeText(),
                                 std::regex("([01][0-9]|2[0-3]):[0-5][0-9]:[0-6][0-9]")));
}

}  // namespace
