#include "Base/LargeAngle.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace LargeAngle {

namespace {

constexpr int kWordBits = 32;
constexpr int kMantissaBits = 24;
using Words = std::array<std::uint32_t, 4>;

/// The binary digits of 2/pi behind the point; the largest single precision number needs 230.
constexpr std::array<std::uint32_t, 8> kTwoOverPi = {
    0xA2F9836E, 0x4E441529, 0xFC2757D1, 0xF534DDC0, 0xDB629599, 0x3C439041, 0xFE5163AB, 0xDEBBC561};

std::uint32_t WordOfDigits(int index) {
    return index < 0 || index >= static_cast<int>(kTwoOverPi.size())
               ? 0
               : kTwoOverPi[static_cast<std::size_t>(index)];
}

/// 32 digits of 2/pi behind the first `skipped` ones; in front of the point there are zeros.
std::uint32_t Digits(int skipped) {
    const int index = static_cast<int>(std::floor(skipped / static_cast<double>(kWordBits)));
    const int shift = skipped - index * kWordBits;
    const std::uint64_t both =
        std::uint64_t{WordOfDigits(index)} << kWordBits | WordOfDigits(index + 1);
    return static_cast<std::uint32_t>(both >> (kWordBits - shift));
}

/// mantissa * 2^exponent in quarter turns, without whole turns: two bits of quarters, then 126 of
/// their fraction. Digits of 2/pi that give whole turns are left out from the start (Payne and
/// Hanek's reduction).
Words QuarterTurns(std::uint32_t mantissa, int exponent) {
    Words words{};
    std::uint64_t carry = 0;
    for (int i = 3; i >= 0; --i) {
        carry += std::uint64_t{mantissa} * Digits(exponent - 2 + i * kWordBits);
        words[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>(carry);
        carry >>= kWordBits;
    }
    return words;
}

/// 1 minus a fraction, but for its last bit.
void Complement(Words& words) {
    for (std::uint32_t& word : words) word = ~word;
}

}  // namespace

SineAndCosine Take(float angle) {
    int exponent = 0;
    const float fraction = std::frexp(std::fabs(angle), &exponent);
    const auto mantissa = static_cast<std::uint32_t>(std::ldexp(fraction, kMantissaBits));
    Words words = QuarterTurns(mantissa, exponent - kMantissaBits);

    unsigned int quarters = words[0] >> 30;
    const bool isNearerToNext = (words[0] & 0x20000000u) != 0;
    if (isNearerToNext) {
        ++quarters;
        Complement(words);
    }
    const std::uint64_t high = (std::uint64_t{words[0] & 0x3FFFFFFFu} << kWordBits) | words[1];
    const std::uint64_t low = (std::uint64_t{words[2]} << kWordBits) | words[3];
    const double part =
        std::ldexp(static_cast<double>(high), -62) + std::ldexp(static_cast<double>(low), -126);
    const double rest = (isNearerToNext ? -part : part) * (std::numbers::pi / 2);

    const double sine = std::sin(rest);
    const double cosine = std::cos(rest);
    const double turned[] = {sine, cosine, -sine, -cosine, sine};
    const double sign = angle < 0 ? -1 : 1;
    return {sign * turned[quarters % 4], turned[quarters % 4 + 1]};
}

}  // namespace LargeAngle
