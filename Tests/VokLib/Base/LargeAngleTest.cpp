#include "Base/LargeAngle.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace {

std::uint32_t Sine(float angle) {
    return std::bit_cast<std::uint32_t>(static_cast<float>(LargeAngle::Take(angle).sine));
}

std::uint32_t Cosine(float angle) {
    return std::bit_cast<std::uint32_t>(static_cast<float>(LargeAngle::Take(angle).cosine));
}

// The bits were computed with integers of 400 digits.
TEST(LargeAngle, SineAndCosineAreKnownToTheBit) {
    EXPECT_EQ(Sine(16384.0f), 0xBF0F5821u);
    EXPECT_EQ(Cosine(16384.0f), 0xBF541AD1u);
    EXPECT_EQ(Sine(20000.5f), 0x3F668E45u);
    EXPECT_EQ(Cosine(20000.5f), 0x3EDE8805u);
    EXPECT_EQ(Sine(1e6f), 0xBEB33259u);
    EXPECT_EQ(Cosine(1e6f), 0x3F6FCEFDu);
    EXPECT_EQ(Sine(8388608.0f), 0x3EDD4FA3u);
    EXPECT_EQ(Cosine(8388608.0f), 0xBF66D965u);
    EXPECT_EQ(Sine(16777216.0f), 0xBF47917Cu);
    EXPECT_EQ(Cosine(16777216.0f), 0x3F2056B4u);
    EXPECT_EQ(Sine(123456789.0f), 0xBF75DD9Cu);
    EXPECT_EQ(Cosine(123456789.0f), 0xBE8EA22Cu);
    EXPECT_EQ(Sine(1e10f), 0xBEF99A64u);
    EXPECT_EQ(Cosine(1e10f), 0x3F5F84C5u);
    EXPECT_EQ(Sine(6.3e15f), 0xBF316B2Au);
    EXPECT_EQ(Cosine(6.3e15f), 0x3F388CC1u);
    EXPECT_EQ(Sine(9.2233720e18f), 0x3F7FFB70u);
    EXPECT_EQ(Cosine(9.2233720e18f), 0x3C41551Cu);
    EXPECT_EQ(Sine(1e22f), 0xBF3BECC4u);
    EXPECT_EQ(Cosine(1e22f), 0x3F2DD6F7u);
    EXPECT_EQ(Sine(3e30f), 0xBF766ADCu);
    EXPECT_EQ(Cosine(3e30f), 0xBE8AC5C8u);
    EXPECT_EQ(Sine(1e38f), 0x3F7D39E2u);
    EXPECT_EQ(Cosine(1e38f), 0x3E1655CDu);
    EXPECT_EQ(Sine(3.4028235e38f), 0xBF0599B3u);
    EXPECT_EQ(Cosine(3.4028235e38f), 0x3F5A5F96u);
}

TEST(LargeAngle, TheSineIsOddAndTheCosineEven) {
    for (float angle = LargeAngle::kSmallest; angle < 1e38f; angle *= 1.7f) {
        const auto [sine, cosine] = LargeAngle::Take(angle);
        EXPECT_EQ(LargeAngle::Take(-angle).sine, -sine);
        EXPECT_EQ(LargeAngle::Take(-angle).cosine, cosine);
        EXPECT_NEAR(sine * sine + cosine * cosine, 1, 1e-15) << angle;
    }
}

TEST(LargeAngle, ItGoesOnWhereTheLibraryIsExact) {
    for (float angle = 16000; angle < 17000; angle += 0.375f) {
        const auto [sine, cosine] = LargeAngle::Take(angle);
        EXPECT_NEAR(sine, std::sin(static_cast<double>(angle)), 1e-14) << angle;
        EXPECT_NEAR(cosine, std::cos(static_cast<double>(angle)), 1e-14) << angle;
    }
}

}  // namespace
