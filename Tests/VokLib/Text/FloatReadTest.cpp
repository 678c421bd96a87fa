#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Text/VokTextReader.h>

#include "Text/FloatRead.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

float Read(const std::string& text) {
    return VokNumberText::ReadFloat(text.data(), text.data() + text.size());
}

std::uint32_t Bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

/// The definition, digit by digit, without a short way for anything but the very small numbers.
float ReadByDefinition(const std::string& text) {
    std::size_t i = 0;
    const auto isDigit = [&] { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    const bool negative = !text.empty() && text[0] == '-';
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) ++i;
    double acc = 0;
    int e = 0;
    for (; isDigit(); ++i) {
        if (acc < 72057594037927936.0)
            acc = acc * 10 + (text[i] - '0');
        else
            ++e;
    }
    if (i < text.size() && text[i] == '.') {
        for (++i; isDigit(); ++i) {
            if (acc >= 72057594037927936.0) continue;
            acc = acc * 10 + (text[i] - '0');
            --e;
        }
    }
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) e += std::atoi(text.c_str() + i + 1);
    double power = 1;
    double square = 5;
    for (unsigned m = static_cast<unsigned>(std::abs(e)); m != 0; m >>= 1, square *= square)
        if ((m & 1) != 0) power *= square;
    acc = std::ldexp(e < 0 ? acc / power : acc * power, e);
    return static_cast<float>(negative ? -acc : acc);
}

TEST(FloatRead, PlainNumbers) {
    EXPECT_EQ(Read("0"), 0.0f);
    EXPECT_EQ(Read("17"), 17.0f);
    EXPECT_EQ(Read("+1.25"), 1.25f);
    EXPECT_EQ(Read("-1.25"), -1.25f);
    EXPECT_EQ(Read(".5"), 0.5f);
    EXPECT_EQ(Read("5."), 5.0f);
    EXPECT_EQ(Read("1e3"), 1000.0f);
    EXPECT_EQ(Read("1E+3"), 1000.0f);
    EXPECT_EQ(Read("25e-2"), 0.25f);
    EXPECT_EQ(Read("0.1"), 0.1f);
}

TEST(FloatRead, StopsAtTheFirstCharacterThatDoesNotFit) {
    EXPECT_EQ(Read("1.5.5"), 1.5f);
    EXPECT_EQ(Read("1,5"), 1.0f);
    EXPECT_EQ(Read("2x"), 2.0f);
    EXPECT_EQ(Read("3e"), 3.0f);
    EXPECT_EQ(Read("3e+"), 3.0f);
    EXPECT_EQ(Read("3e1.5"), 30.0f);
    EXPECT_EQ(Read("0x10"), 0.0f);
    EXPECT_EQ(Read("--1"), -0.0f);
}

TEST(FloatRead, StopsAtTheTokensEnd) {
    const char* const text = "1234e5";
    EXPECT_EQ(VokNumberText::ReadFloat(text, text + 2), 12.0f);
    EXPECT_EQ(VokNumberText::ReadFloat(text, text + 5), 1234.0f);
    EXPECT_EQ(VokNumberText::ReadFloat(text, text), 0.0f);
    const char* const small = "1e-501";
    EXPECT_EQ(Bits(VokNumberText::ReadFloat(small, small + 5)), Bits(0.0f));
    const char* const tiny = "1e-451";
    EXPECT_EQ(Bits(VokNumberText::ReadFloat(tiny, tiny + 5)), 1u);
}

TEST(FloatRead, SignAloneIsAZero) {
    EXPECT_EQ(Bits(Read("-")), 0x80000000u);
    EXPECT_EQ(Bits(Read("+")), 0u);
    EXPECT_EQ(Bits(Read("")), 0u);
}

TEST(FloatRead, WordsAreZeros) {
    EXPECT_EQ(Bits(Read("INF")), 0u);
    EXPECT_EQ(Bits(Read("-INF")), 0x80000000u);
    EXPECT_EQ(Bits(Read("NAN")), 0u);
}

TEST(FloatRead, LargeNumbersBecomeInfinite) {
    EXPECT_EQ(Read("1e39"), kInfinity);
    EXPECT_EQ(Read("-1e39"), -kInfinity);
    EXPECT_EQ(Read("3.40282347e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(Read("1e99999999999999999999"), kInfinity);
    EXPECT_EQ(Read("-1e2147483648"), -kInfinity);
}

TEST(FloatRead, ZeroTimesAPowerBeyondDoublesIsNoNumber) {
    EXPECT_EQ(Bits(Read("0e441")), 0u);
    EXPECT_TRUE(std::isnan(Read("0e442")));
    EXPECT_TRUE(std::isnan(Read("0e2147483647")));
}

TEST(FloatRead, VerySmallNumbersAreScanned) {
    EXPECT_EQ(Bits(Read("1e-50")), 0u);
    EXPECT_EQ(Bits(Read("-1e-50")), 0x80000000u);
    EXPECT_EQ(Bits(Read("1.40129846e-45")), 1u);
    EXPECT_EQ(Bits(Read("1e-41")), Bits(1e-41f));
    EXPECT_EQ(Bits(Read("1e-40")), Bits(1e-40f));
    EXPECT_EQ(Bits(Read("1e-99999999999999999999")), 0u);
    // The scanner wants a digit, and there is none; its answer has no sign.
    EXPECT_EQ(Bits(Read("-e-50")), 0u);
    EXPECT_EQ(Bits(Read("-.e-50")), 0u);
}

TEST(FloatRead, SmallNumbersWithoutAnExponentTakeTheShortWay) {
    EXPECT_EQ(Bits(Read("0." + std::string(44, '0') + "1")), 1u);
    EXPECT_EQ(Bits(Read("0." + std::string(600, '0') + "1")), 0u);
    EXPECT_EQ(Bits(Read("-0." + std::string(600, '0') + "1")), 0x80000000u);
    EXPECT_EQ(Read("1" + std::string(60, '0') + "e-60"), 1.0f);
}

TEST(FloatRead, DigitsPastFullPrecisionAreDroppedAndScaledIn) {
    EXPECT_EQ(Read(std::string(70, '1') + "e-69"), 1.11111111111f);
    EXPECT_EQ(Read("3." + std::string(80, '3')), 3.33333333333f);
    EXPECT_EQ(Read("1" + std::string(38, '0')), 1e38f);
    EXPECT_EQ(Read("1" + std::string(39, '0')), kInfinity);
    EXPECT_EQ(Read(std::string(5000, '0') + "7"), 7.0f);
}

TEST(FloatRead, LongNumbersAgreeWithTheDefinition) {
    std::mt19937 random(3);
    for (int i = 0; i < 200000; ++i) {
        std::string text = random() % 2 == 0 ? "" : "-";
        for (auto n = random() % 14; n > 0; --n) text += static_cast<char>('0' + random() % 10);
        text += '1';
        if (random() % 4 != 0) text += '.';
        for (auto n = random() % 14; n > 0; --n) text += static_cast<char>('0' + random() % 10);
        if (random() % 3 == 0) text += "e" + std::to_string(static_cast<int>(random() % 75) - 38);
        ASSERT_EQ(Bits(Read(text)), Bits(ReadByDefinition(text))) << text;
    }
}

/// One of several texts.
template <std::size_t kCount>
std::string_view Pick(std::mt19937& random, const std::string_view (&texts)[kCount]) {
    return texts[random() % kCount];
}

void AppendDigits(std::string& text, std::mt19937& random, unsigned most) {
    for (auto n = random() % (most + 1); n > 0; --n) text += static_cast<char>('0' + random() % 10);
}

/// A number in any shape that the grammar has, and in some that it has not.
std::string MakeShape(std::mt19937& random) {
    static constexpr std::string_view kSigns[] = {"", "", "-", "-", "+", "--", "+-"};
    static constexpr std::string_view kPoints[] = {".", ".", ".", ".", "", "..", ",", ":", "/"};
    static constexpr std::string_view kPowers[] = {"",   "",   "",  "e-", "e-",  "e-",
                                                   "e+", "E-", "e", "e",  "e--", "f-"};
    static constexpr std::string_view kTails[] = {
        "", "", "", "", "", "x", "e-3", ".5", ":", "/", "-", "\v", "\x1f", "\x7f", "\xb1", "\xff"};
    std::string text(Pick(random, kSigns));
    AppendDigits(text, random, random() % 4 == 0 ? 20 : 8);
    text += Pick(random, kPoints);
    AppendDigits(text, random, random() % 4 == 0 ? 20 : 9);
    const std::string_view power = Pick(random, kPowers);
    text += power;
    if (!power.empty()) AppendDigits(text, random, 2);
    text += Pick(random, kTails);
    return text;
}

/// A number from a document: what the writer makes of a float, denormals and infinities included,
/// or one in the middle between two floats, which goes to the even one.
std::string MakeValue(std::mt19937& random) {
    static constexpr std::string_view kHalves[] = {".25", ".75", ".125", ".875", ".5"};
    switch (random() % 4) {
        case 0:
            return VokNumberText::FormatFloat(
                std::bit_cast<float>(static_cast<std::uint32_t>(random())));
        case 1:
            return std::to_string((1u << 22) + random() % (1u << 21)) +
                   std::string(Pick(random, kHalves));
        default:
            const float share = static_cast<float>(random() % (1u << 24)) / (1u << 24);
            return VokNumberText::FormatFloat((share * 2 - 1) *
                                              std::pow(10.0f, static_cast<float>(random() % 4)));
    }
}

float ReadPlainly(const std::string& text) {
    const char* cursor = text.data();
    return VokNumberText::Detail::ReadAnyFloat(cursor, text.data() + text.size());
}

TEST(FloatRead, InAListNumbersOfEveryShapeReadAsThePlainReaderReadsThem) {
    static constexpr std::string_view kBlanks[] = {" ", " ", " ", "\n", "\t", "\r\n", "  "};
    constexpr std::size_t kInAList = 300;
    std::mt19937 random(11);
    for (int list = 0; list < 10000; ++list) {
        std::string text;
        std::vector<std::string> tokens;
        while (tokens.size() < kInAList) {
            std::string token = random() % 2 == 0 ? MakeShape(random) : MakeValue(random);
            if (token.empty()) continue;
            text += token;
            text += Pick(random, kBlanks);
            tokens.push_back(std::move(token));
        }
        // The last ends with the text.
        text += tokens.emplace_back("-1.25e-" + std::to_string(list % 12));
        VokTextReader reader;
        reader.AppendText(text.data(), text.size());
        reader.RewindText();
        std::vector<float> values;
        reader.ReadFloats(values, static_cast<long long>(tokens.size()));
        for (std::size_t i = 0; i < tokens.size(); ++i)
            ASSERT_EQ(Bits(values[i]), Bits(ReadPlainly(tokens[i]))) << '"' << tokens[i] << '"';
    }
}

TEST(FloatRead, LooksAtNothingBehindWhatCanBeRead) {
    for (const std::string_view text :
         {"-1.23456789e-5 7.0", "123.456 -0.5 1.0e-12 3.5", "1234567.1234567 8",
          "0.5\n-0.25\t+.5e-1x", "1234567812345678.5", "1.5e-1e5 1.5e-10 1.5e-1.5",
          "0.25e-3 -1.5 1.5e-10 2.5 3.5 4.5 +1234567.1234567 0.5 9.87654321e-5 .5"})
        for (std::size_t begin = 0; begin <= text.size(); ++begin)
            for (std::size_t end = begin; end <= text.size(); ++end) {
                // On the heap and as long as what can be read, so that a sanitizer sees a step
                // beyond.
                const std::vector<char> copy(text.begin() + static_cast<std::ptrdiff_t>(begin),
                                             text.begin() + static_cast<std::ptrdiff_t>(end));
                const char* const last = copy.data() + copy.size();
                const auto taken = VokNumberText::Detail::ReadFloatAt(copy.data(), last, last);
                const char* plain = copy.data();
                const float value = VokNumberText::Detail::ReadAnyFloat(plain, last);
                ASSERT_EQ(Bits(taken.value), Bits(value)) << text.substr(begin, end - begin);
                ASSERT_EQ(taken.behind, plain) << text.substr(begin, end - begin);
            }
}

}  // namespace
