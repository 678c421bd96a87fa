#include "Text/EightBytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using namespace VokNumberText::EightBytes;

namespace {

/// Tests that hold where the first character of a text is in an integer's lowest byte.
class EightBytesTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!kWorksHere) GTEST_SKIP() << "these are not used here";
    }
};

TEST_F(EightBytesTest, DigitsAreTheirValues) {
    EXPECT_EQ(LoadDigits("01234567"), 0x0706050403020100u);
    EXPECT_EQ(LoadDigits("90000000") & 0xFF, 9u);
}

TEST_F(EightBytesTest, TheFirstCharacterThatIsNoDigitIsMarkedWhereverItStands) {
    for (int c = 0; c < 256; ++c)
        for (std::size_t at = 0; at < 8; ++at) {
            std::string text = "90909090";
            text[at] = static_cast<char>(c);
            const std::uint64_t marks = MarkOthers(LoadDigits(text.data()));
            if (c >= '0' && c <= '9') {
                EXPECT_EQ(marks, 0u) << c << " at " << at;
            } else {
                ASSERT_NE(marks, 0u) << c << " at " << at;
                EXPECT_EQ(FindMark(marks), at) << c;
                EXPECT_EQ(FirstMark(marks), std::uint64_t{0x80} << 8 * at) << c;
                EXPECT_TRUE(c >= 0x80 || marks == FirstMark(marks)) << c << " at " << at;
            }
        }
}

TEST_F(EightBytesTest, BytesOnTheSidesOfAMark) {
    EXPECT_EQ(BytesBefore(0x80u), 0u);
    EXPECT_EQ(BytesBehind(0x80u), 0xFFFFFFFFFFFFFF00u);
    EXPECT_EQ(BytesBefore(0x800000u), 0xFFFFu);
    EXPECT_EQ(BytesBehind(0x800000u), 0xFFFFFFFFFF000000u);
    EXPECT_EQ(BytesBefore(0x8000000000000000u), 0x00FFFFFFFFFFFFFFu);
    EXPECT_EQ(BytesBehind(0x8000000000000000u), 0u);
    EXPECT_EQ(kFirstBytes[0], 0u);
    EXPECT_EQ(kFirstBytes[3], 0xFFFFFFu);
    EXPECT_EQ(kFirstBytes[7], 0x00FFFFFFFFFFFFFFu);
}

TEST_F(EightBytesTest, EightDigitsAreOneNumber) {
    for (const std::uint64_t number :
         {std::uint64_t{0}, std::uint64_t{12345678}, std::uint64_t{87654321},
          std::uint64_t{99999999}, std::uint64_t{10000000}, std::uint64_t{90807060}}) {
        const std::string text = std::to_string(100000000 + number).substr(1);
        EXPECT_EQ(JoinDigits(LoadDigits(text.data())), number);
    }
}

TEST(EightBytes, BlanksAndControlsAreNoInk) {
    for (int c = 0; c < 256; ++c) EXPECT_EQ(IsInk(static_cast<char>(c)), c > ' ') << c;
}

}  // namespace
