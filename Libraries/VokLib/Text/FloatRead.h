#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace VokNumberText::Detail {

/// 5 to the power m as the format defines it: by repeated squaring, from the lowest bit of m up,
/// each product rounded.
constexpr double PowerOfFive(std::uint64_t m) {
    double power = 1.0;
    for (double square = 5.0; m != 0; m >>= 1) {
        if ((m & 1) != 0) power *= square;
        if (m > 1) square *= square;
    }
    return power;
}

inline constexpr std::size_t kScaleCount = 64;

/// The powers of five times the same power of two: scaling by two is exact, so one operation does
/// the work of both.
inline constexpr std::array<double, kScaleCount> kScales = [] {
    std::array<double, kScaleCount> scales{};
    for (std::size_t m = 0; m < kScaleCount; ++m)
        scales[m] = PowerOfFive(m) * static_cast<double>(std::uint64_t{1} << m);
    return scales;
}();

/// The number at `cursor` by the steps of the definition, whatever its length; `cursor` moves
/// behind what was used.
float ReadAnyFloat(const char*& cursor, const char* end);

inline unsigned DigitAt(const char* p) {
    return static_cast<unsigned char>(*p) - static_cast<unsigned>('0');
}

/// Appends the digits at `p` to `digits` and moves `p` behind them. False when the whole would no
/// longer be exact in a double.
inline bool TakeDigits(const char*& p, const char* end, std::uint64_t& digits) {
    constexpr std::uint64_t kRoomForOneMore = (std::uint64_t{1} << 53) / 10 - 1;
    for (unsigned digit = 0; p != end && (digit = DigitAt(p)) <= 9; ++p) {
        if (digits > kRoomForOneMore) return false;
        digits = digits * 10 + digit;
    }
    return true;
}

/// The number whose eight digits are the bytes of `digits`, the first in the lowest: neighbours are
/// joined to numbers of two, four and eight digits.
inline std::uint64_t JoinEightDigits(std::uint64_t digits) {
    constexpr std::uint64_t kPairs = 0x000000FF000000FFu;
    constexpr std::uint64_t kMillionAndHundred = (std::uint64_t{1000000} << 32) + 100;
    constexpr std::uint64_t kTenThousandAndOne = (std::uint64_t{10000} << 32) + 1;
    digits = digits * 10 + (digits >> 8);
    return ((digits & kPairs) * kMillionAndHundred +
            ((digits >> 16) & kPairs) * kTenThousandAndOne) >>
           32;
}

inline constexpr std::ptrdiff_t kReadAhead = 16;

/// Reads up to seven digits, a point and digits up to fifteen in all, without a branch on how many
/// there are: what the writer makes of nearly every number. False, and nothing done, for any other
/// form and where fewer than kReadAhead characters can be read.
inline bool TakePointNumber(const char*& p, const char* readable, std::uint64_t& number,
                            std::ptrdiff_t& exponent) {
    if (std::endian::native != std::endian::little || readable - p < kReadAhead) return false;
    std::uint64_t low;
    std::uint64_t high;
    std::memcpy(&low, p, sizeof low);
    std::memcpy(&high, p + 8, sizeof high);
    low ^= 0x3030303030303030u;  // digits become 0 to 9, everything else is above
    high ^= 0x3030303030303030u;
    const auto others = [](std::uint64_t word) {
        return (word | (word + 0x7676767676767676u)) & 0x8080808080808080u;
    };
    const std::uint64_t stops = others(low);
    if (stops == 0) return false;
    const int whole = std::countr_zero(stops) / 8;
    if (p[whole] != '.') return false;
    int length;  // up to the first character behind the fraction
    if (const std::uint64_t second = stops & (stops - 1); second != 0)
        length = std::countr_zero(second) / 8;
    else if (const std::uint64_t behind = others(high); behind != 0)
        length = 8 + std::countr_zero(behind) / 8;
    else
        return false;

    // The fraction moves down over the point, then all digits up, so that zeros stand in front.
    const std::uint64_t wholeDigits = (std::uint64_t{1} << (8 * whole)) - 1;
    low = (low & wholeDigits) | (((low >> 8) | (high << 56)) & ~wholeDigits);
    high >>= 8;
    const int shift = 8 * (17 - length);
    if (shift < 64) {
        high = (high << shift) | (low >> (64 - shift));
        low <<= shift;
        number = JoinEightDigits(low) * 100000000 + JoinEightDigits(high);
    } else {
        number = shift < 128 ? JoinEightDigits(low << (shift - 64)) : 0;
    }
    exponent = whole + 1 - length;
    p += length;
    return true;
}

/// As ReadAnyFloat; numbers of up to fifteen digits, which are exact in an integer, take a short
/// way. What can be read ends at `readable`; where that is not `end`, a NUL stands there.
inline float ReadFloatAt(const char*& cursor, const char* end, const char* readable) {
    const char* p = cursor;
    // Signs come at random, so no branch hangs on them.
    const char first = p != end ? *p : '\0';
    const bool negative = first == '-';
    p += static_cast<int>(negative) | static_cast<int>(first == '+');

    std::uint64_t digits = 0;
    std::ptrdiff_t exponent = 0;
    if (!TakePointNumber(p, readable, digits, exponent)) {
        if (!TakeDigits(p, end, digits)) return ReadAnyFloat(cursor, end);
        if (p != end && *p == '.') {
            const char* const fraction = ++p;
            if (!TakeDigits(p, end, digits)) return ReadAnyFloat(cursor, end);
            exponent = fraction - p;
        }
    }
    if (p != end && (*p == 'e' || *p == 'E')) {
        ++p;
        const bool negativeExponent = p != end && *p == '-';
        if (negativeExponent || (p != end && *p == '+')) ++p;
        // Two digits of exponent cover every number that ends up here in practice.
        int value = 0;
        int count = 0;
        for (unsigned digit = 0; p != end && (digit = DigitAt(p)) <= 9; ++p) {
            if (++count > 2) return ReadAnyFloat(cursor, end);
            value = value * 10 + static_cast<int>(digit);
        }
        // Very small numbers need the digits counted.
        if (negativeExponent && value > 30) return ReadAnyFloat(cursor, end);
        exponent += negativeExponent ? -value : value;
    }
    if (exponent <= -static_cast<std::ptrdiff_t>(kScaleCount) ||
        exponent >= static_cast<std::ptrdiff_t>(kScaleCount))
        return ReadAnyFloat(cursor, end);

    double value = static_cast<double>(static_cast<std::int64_t>(digits));
    if (exponent < 0)
        value /= kScales[static_cast<std::size_t>(-exponent)];
    else if (exponent > 0)
        value *= kScales[static_cast<std::size_t>(exponent)];
    cursor = p;
    const std::uint64_t sign = std::uint64_t{negative} << 63;
    return static_cast<float>(std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) ^ sign));
}

}  // namespace VokNumberText::Detail
