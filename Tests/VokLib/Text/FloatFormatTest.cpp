#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <VokLib/Text/VokNumberText.h>

#include "VokLib/Text/ExactDecimal.h"

namespace {

using VokNumberText::FormatFloat;

float FromBits(std::uint32_t bits) {
    return std::bit_cast<float>(bits);
}

std::uint32_t ReadBack(const std::string& text) {
    const char* const begin = text.data();
    return std::bit_cast<std::uint32_t>(VokNumberText::ReadFloat(begin, begin + text.size()));
}

/// Every power of two and its nearest neighbours, both signs.
std::vector<std::uint32_t> MakeBorderCases() {
    std::vector<std::uint32_t> cases;
    const auto add = [&](std::uint32_t bits) {
        for (const std::uint32_t near : {bits - 2, bits - 1, bits, bits + 1, bits + 2}) {
            if ((near & 0x7FFFFFFFu) == 0 || (near & 0x7F800000u) == 0x7F800000u) continue;
            cases.push_back(near);
            cases.push_back(near ^ 0x80000000u);
        }
    };
    for (std::uint32_t exponent = 0; exponent < 255; ++exponent) add(exponent << 23);
    for (std::uint32_t bit = 0; bit < 23; ++bit) add(1u << bit);
    add(0x7F7FFFFFu);
    return cases;
}

TEST(FloatFormat, WordsAndZeros) {
    EXPECT_EQ(FormatFloat(std::numeric_limits<float>::quiet_NaN()), "NAN");
    EXPECT_EQ(FormatFloat(-std::numeric_limits<float>::quiet_NaN()), "NAN");
    EXPECT_EQ(FormatFloat(std::numeric_limits<float>::infinity()), "INF");
    EXPECT_EQ(FormatFloat(-std::numeric_limits<float>::infinity()), "-INF");
    EXPECT_EQ(FormatFloat(0.0f), "0.0");
    EXPECT_EQ(FormatFloat(-0.0f), "-0.0");
}

TEST(FloatFormat, PlainNumbers) {
    EXPECT_EQ(FormatFloat(1.0f), "1.0");
    EXPECT_EQ(FormatFloat(100.0f), "100.0");
    EXPECT_EQ(FormatFloat(1.5f), "1.5");
    EXPECT_EQ(FormatFloat(123456.0f), "123456.0");
    EXPECT_EQ(FormatFloat(0.5f), "0.5");
    EXPECT_EQ(FormatFloat(0.25f), "0.25");
    EXPECT_EQ(FormatFloat(-0.25f), "-0.25");
    EXPECT_EQ(FormatFloat(0.125f), "0.125");
    EXPECT_EQ(FormatFloat(-100.0f), "-100.0");
    EXPECT_EQ(FormatFloat(10.25f), "10.25");
    EXPECT_EQ(FormatFloat(123456792.0f), "123456792.0");
    EXPECT_EQ(FormatFloat(-123456792.0f), "-123456792.0");
    EXPECT_EQ(FormatFloat(3.14159274f), "3.14159274");
}

TEST(FloatFormat, ManyDigitsBelowOneTakeTheExponentForm) {
    EXPECT_EQ(FormatFloat(0.1f), "1.00000001e-1");
    EXPECT_EQ(FormatFloat(0.035f), "3.50000001e-2");
    EXPECT_EQ(FormatFloat(-0.1f), "-1.00000001e-1");
}

TEST(FloatFormat, FixedFormBelowOneEndsWhereDigitsAndZerosReachNine) {
    EXPECT_EQ(FormatFloat(0.0078125f), "0.0078125");
    EXPECT_EQ(FormatFloat(0.00390625f), "3.90625e-3");
    EXPECT_EQ(FormatFloat(0.001953125f), "1.953125e-3");
}

TEST(FloatFormat, SignCountsAsADigitInTheChoiceOfForm) {
    EXPECT_EQ(FormatFloat(0.0234375f), "0.0234375");
    EXPECT_EQ(FormatFloat(0.01171875f), "1.171875e-2");
    EXPECT_EQ(FormatFloat(0.8671875f), "0.8671875");
    EXPECT_EQ(FormatFloat(-0.8671875f), "-8.671875e-1");
}

TEST(FloatFormat, ZerosStayFromTenDigitsOn) {
    EXPECT_EQ(FormatFloat(1000000000.0f), "1.00000000e9");
    EXPECT_EQ(FormatFloat(-1000000000.0f), "-1.00000000e9");
    EXPECT_EQ(FormatFloat(100000000.0f), "100000000.0");
    EXPECT_EQ(FormatFloat(10000000000.0f), "1.00000000e10");
    EXPECT_EQ(FormatFloat(std::numeric_limits<float>::max()), "3.40282347e38");
}

TEST(FloatFormat, SmallestNumbers) {
    EXPECT_EQ(FormatFloat(FromBits(1)), "1.40129846e-45");
    EXPECT_EQ(FormatFloat(FromBits(0x00800000u)), "1.17549435e-38");
}

TEST(FloatFormat, CarryTakesTheNinesAway) {
    // Where zeros stay, a carry is seen: the digits of each end in nines that a tenth digit rounds
    // up.
    int shortened = 0;
    for (std::uint32_t bits = 0x4F000000u; bits < 0x4F000000u + 20000; ++bits) {
        const std::string text = FormatFloat(FromBits(bits));
        ASSERT_EQ(text, FormatByExactDecimal(FromBits(bits)));
        shortened += text.size() < sizeof "2.14748365e9" - 1 ? 1 : 0;
    }
    EXPECT_GT(shortened, 0);
}

TEST(FloatFormat, TieGoesToTheEvenDigit) {
    // 2^-k has k digits behind the point that end in 5; with nine before the last one they are
    // ties.
    EXPECT_EQ(FormatFloat(1.0f + 0x1p-9f), "1.00195312");
    EXPECT_EQ(FormatFloat(1.0f + 3 * 0x1p-9f), "1.00585938");
}

TEST(FloatFormat, BorderCasesAgreeWithTheExactExpansion) {
    for (const std::uint32_t bits : MakeBorderCases())
        ASSERT_EQ(FormatFloat(FromBits(bits)), FormatByExactDecimal(FromBits(bits)))
            << std::hex << bits;
}

TEST(FloatFormat, RandomNumbersAgreeWithTheExactExpansion) {
    std::mt19937 random(20);
    for (int i = 0; i < 100000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        if ((bits & 0x7F800000u) == 0x7F800000u) continue;
        ASSERT_EQ(FormatFloat(FromBits(bits)), FormatByExactDecimal(FromBits(bits)))
            << std::hex << bits;
    }
}

TEST(FloatFormat, TextReadsBackAsTheSameFloat) {
    for (const std::uint32_t bits : MakeBorderCases())
        ASSERT_EQ(ReadBack(FormatFloat(FromBits(bits))), bits) << std::hex << bits;
    std::mt19937 random(21);
    for (int i = 0; i < 1000000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        if ((bits & 0x7F800000u) == 0x7F800000u) continue;
        ASSERT_EQ(ReadBack(FormatFloat(FromBits(bits))), bits) << std::hex << bits;
    }
}

TEST(FloatFormat, ZerosReadBackAndWordsDoNot) {
    EXPECT_EQ(ReadBack(FormatFloat(0.0f)), 0u);
    EXPECT_EQ(ReadBack(FormatFloat(-0.0f)), 0x80000000u);
    EXPECT_EQ(ReadBack(FormatFloat(std::numeric_limits<float>::quiet_NaN())), 0u);
    EXPECT_EQ(ReadBack(FormatFloat(std::numeric_limits<float>::infinity())), 0u);
    EXPECT_EQ(ReadBack(FormatFloat(-std::numeric_limits<float>::infinity())), 0x80000000u);
}

}  // namespace
