#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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

/// As ReadAnyFloat; numbers of up to fifteen digits, which are exact in an integer, take a short
/// way.
inline float ReadFloatAt(const char*& cursor, const char* end) {
    const char* p = cursor;
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) negative = *p++ == '-';

    std::uint64_t digits = 0;
    if (!TakeDigits(p, end, digits)) return ReadAnyFloat(cursor, end);
    std::ptrdiff_t exponent = 0;
    if (p != end && *p == '.') {
        const char* const fraction = ++p;
        if (!TakeDigits(p, end, digits)) return ReadAnyFloat(cursor, end);
        exponent = fraction - p;
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
    return static_cast<float>(negative ? -value : value);
}

}  // namespace VokNumberText::Detail
