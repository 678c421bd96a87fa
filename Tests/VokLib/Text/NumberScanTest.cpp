#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include <VokLib/Text/VokNumberText.h>

namespace {

using VokNumberText::ScanFloat;
using VokNumberText::ScanInt;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

bool ScansAsNothing(const char* text) {
    float value = 42;
    return !VokNumberText::TryScanFloat(text, value) && ScanFloat(text) == 0;
}

TEST(NumberScan, FloatsAsTheCLocaleReadsThem) {
    EXPECT_EQ(ScanFloat("1.5"), 1.5f);
    EXPECT_EQ(ScanFloat(" \t\n\v\f\r+1.5e2xyz"), 150.0f);
    EXPECT_EQ(ScanFloat("-.5"), -0.5f);
    EXPECT_EQ(ScanFloat("5."), 5.0f);
    EXPECT_EQ(ScanFloat("1,5"), 1.0f);
    EXPECT_EQ(ScanFloat("1e"), 1.0f);
    EXPECT_EQ(ScanFloat("1e+"), 1.0f);
    EXPECT_EQ(ScanFloat("1.5.5"), 1.5f);
    EXPECT_TRUE(std::signbit(ScanFloat("-0")));
}

TEST(NumberScan, EveryShapeOfNumberIsRoundedCorrectly) {
    std::mt19937 random(4);
    for (int round = 0; round < 300000; ++round) {
        std::string text = random() % 2 != 0 ? "-" : "";
        for (std::size_t i = random() % 10 + 1; i != 0; --i) text += "0123456789"[random() % 10];
        if (random() % 4 != 0) {
            text += '.';
            for (std::size_t i = random() % 10; i != 0; --i) text += "0123456789"[random() % 10];
        }
        if (random() % 2 != 0) text += "e" + std::to_string(static_cast<int>(random() % 60) - 30);
        const float value = ScanFloat(text);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(value),
                  std::bit_cast<std::uint32_t>(std::strtof(text.c_str(), nullptr)))
            << text;
    }
}

TEST(NumberScan, NumbersBetweenTwoFloatsGoToTheRightOne) {
    std::mt19937 random(5);
    for (int round = 0; round < 100000; ++round) {
        // Half a step above a whole float, and a little to either side of it.
        const std::uint64_t middle = (std::uint64_t{1} << 24 | random() % (1u << 24)) * 2 + 1;
        for (const char* fraction : {"", ".0", ".000001", ".5"}) {
            const std::string above = std::to_string(middle) + fraction;
            EXPECT_EQ(ScanFloat(above), std::strtof(above.c_str(), nullptr)) << above;
            const std::string below = std::to_string(middle - 1) + ".999999";
            EXPECT_EQ(ScanFloat(below), std::strtof(below.c_str(), nullptr)) << below;
        }
    }
}

TEST(NumberScan, HexadecimalFloats) {
    EXPECT_EQ(ScanFloat("0x1p3"), 8.0f);
    EXPECT_EQ(ScanFloat("-0X.8P1"), -1.0f);
    EXPECT_EQ(ScanFloat("0x1F"), 31.0f);
    EXPECT_EQ(ScanFloat("0x1.8"), 1.5f);
    EXPECT_EQ(ScanFloat("0x1p99999999999"), kInfinity);
    EXPECT_EQ(ScanFloat("0x1p-99999999999"), 0.0f);
    // Two signs are no exponent, and the number ends in front of them.
    EXPECT_EQ(ScanFloat("0x0904p+-3y"), 2308.0f);
    EXPECT_EQ(ScanFloat("0x0904P++3"), 2308.0f);
    EXPECT_EQ(ScanFloat("0x1.8p--3"), 1.5f);
    EXPECT_EQ(ScanFloat("0x1p+"), 1.0f);
    EXPECT_EQ(ScanFloat("0x1p+3"), 8.0f);
    EXPECT_EQ(ScanFloat("0x1p+-999999"), 1.0f);
    EXPECT_EQ(ScanFloat("1e+-3"), 1.0f);
    EXPECT_EQ(ScanFloat("1e-+3"), 1.0f);
    EXPECT_TRUE(ScansAsNothing("0x"));
    EXPECT_TRUE(ScansAsNothing("0xg"));
    EXPECT_TRUE(ScansAsNothing("0x.p1"));
}

TEST(NumberScan, Words) {
    EXPECT_EQ(ScanFloat("inf"), kInfinity);
    EXPECT_EQ(ScanFloat("-INF"), -kInfinity);
    EXPECT_EQ(ScanFloat("Infinity"), kInfinity);
    EXPECT_EQ(ScanFloat("infx"), kInfinity);
    EXPECT_TRUE(ScansAsNothing("infin"));
    EXPECT_TRUE(ScansAsNothing("in"));
    EXPECT_TRUE(std::isnan(ScanFloat("nan")));
    EXPECT_TRUE(std::isnan(ScanFloat("-NaN(1)")));
}

TEST(NumberScan, WhatIsNoFloatIsZero) {
    for (const char* text : {"", " ", "x", "+", "-", "+-1", ".", ".e1", "e5", "- 1"})
        EXPECT_TRUE(ScansAsNothing(text)) << text;
}

TEST(NumberScan, FloatsBeyondTheRange) {
    EXPECT_EQ(ScanFloat("1e39"), kInfinity);
    EXPECT_EQ(ScanFloat("-1e999999999999999999999"), -kInfinity);
    EXPECT_EQ(ScanFloat("0.0001e400"), kInfinity);
    EXPECT_EQ(ScanFloat("1e-46"), 0.0f);
    EXPECT_TRUE(std::signbit(ScanFloat("-1e-999999999999999999999")));
    EXPECT_EQ(ScanFloat("1000000e-400"), 0.0f);
    EXPECT_EQ(ScanFloat("0e999"), 0.0f);
    EXPECT_EQ(ScanFloat("1" + std::string(400, '0')), kInfinity);
    EXPECT_EQ(ScanFloat("0." + std::string(400, '0') + "1"), 0.0f);
    // The zeros behind the point weigh against the exponent.
    EXPECT_EQ(ScanFloat("0." + std::string(400, '0') + "1e300"), 0.0f);
    EXPECT_EQ(ScanFloat("0." + std::string(400, '0') + "1e500"), kInfinity);
    EXPECT_EQ(ScanFloat("1" + std::string(400, '0') + "e-400"), 1.0f);
}

TEST(NumberScan, SmallFloatsAreRoundedOnce) {
    std::mt19937 random(4);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = std::to_string(random()) + "." + std::to_string(random()) + "e-" +
                                 std::to_string(45 + random() % 14);
        ASSERT_EQ(ScanFloat(text), std::strtof(text.c_str(), nullptr)) << text;
    }
}

TEST(NumberScan, Integers) {
    EXPECT_EQ(ScanInt("17"), 17);
    EXPECT_EQ(ScanInt(" \t\n\v\f\r-17.9"), -17);
    EXPECT_EQ(ScanInt("+5x"), 5);
    EXPECT_EQ(ScanInt("007"), 7);
    EXPECT_EQ(ScanInt("0x10"), 0);
    EXPECT_EQ(ScanInt("1,000"), 1);
    for (const char* text : {"", " ", "x", "+", "-", "--1", "- 1"}) {
        int value = 42;
        EXPECT_FALSE(VokNumberText::TryScanInt(text, value)) << text;
        EXPECT_EQ(ScanInt(text), 0) << text;
    }
}

TEST(NumberScan, IntegersBeyondTheRangeKeepTheLow32BitsOfASaturated64) {
    EXPECT_EQ(ScanInt("2147483647"), 2147483647);
    EXPECT_EQ(ScanInt("-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(ScanInt("2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(ScanInt("4294967295"), -1);
    EXPECT_EQ(ScanInt("4294967301"), 5);
    EXPECT_EQ(ScanInt("-4294967297"), -1);
    EXPECT_EQ(ScanInt("9223372036854775807"), -1);
    EXPECT_EQ(ScanInt("9223372036854775808"), -1);
    EXPECT_EQ(ScanInt("99999999999999999999999999"), -1);
    EXPECT_EQ(ScanInt("-9223372036854775808"), 0);
    EXPECT_EQ(ScanInt("-99999999999999999999999999"), 0);
}

TEST(NumberScan, TokensAreCutAtFourCharactersAlone) {
    const char* begins[4];
    const char* ends[4];
    const std::string text = " \t1\r\n2\v3 \f4 ";
    ASSERT_EQ(VokNumberText::CutTokens(text.c_str(), 4, begins, ends), 3u);
    EXPECT_EQ(std::string(begins[0], ends[0]), "1");
    EXPECT_EQ(std::string(begins[1], ends[1]), "2\v3");
    EXPECT_EQ(std::string(begins[2], ends[2]), "\f4");
    EXPECT_EQ(VokNumberText::CutTokens(text.c_str(), 2, begins, ends), 2u);
    EXPECT_EQ(VokNumberText::CutTokens(" \n", 4, begins, ends), 0u);
    EXPECT_EQ(VokNumberText::CutTokens("", 4, begins, ends), 0u);
}

}  // namespace
