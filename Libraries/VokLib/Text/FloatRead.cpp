#include "Text/FloatRead.h"

#include <VokLib/Text/VokNumberText.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace VokNumberText {

namespace {

/// Beyond these a double is infinite or zero whatever it is scaled from.
constexpr std::int64_t kScaleLimit = 100000;

bool IsDigit(const char* p, const char* end) {
    return p != end && Detail::DigitAt(p) <= 9;
}

/// The digits behind an exponent's letter, with their sign; as many as there are, held at the
/// bounds of an int.
std::int64_t ReadExponent(const char*& p, const char* end) {
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) negative = *p++ == '-';
    std::int64_t value = 0;
    for (; IsDigit(p, end); ++p)
        value = std::min<std::int64_t>(value * 10 + Detail::DigitAt(p),
                                       std::numeric_limits<int>::max());
    return negative ? -value : value;
}

float ScanToken(const char* begin, const char* end) {
    const char* tokenEnd = begin;
    while (tokenEnd != end && !IsBlank(*tokenEnd) && *tokenEnd != '\0') ++tokenEnd;
    return ScanFloat({begin, static_cast<std::size_t>(tokenEnd - begin)});
}

double Scale(double value, std::int64_t exponent) {
    const double power = Detail::PowerOfFive(static_cast<std::uint64_t>(std::abs(exponent)));
    value = exponent < 0 ? value / power : value * power;
    return std::ldexp(value, static_cast<int>(std::clamp(exponent, -kScaleLimit, kScaleLimit)));
}

}  // namespace

float Detail::ReadAnyFloat(const char*& cursor, const char* end) {
    constexpr double kFull = 72057594037927936.0;  // 2^56: digits beyond it change no float
    const char* const begin = cursor;
    const char* p = begin;
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) negative = *p++ == '-';

    double value = 0.0;
    std::int64_t exponent = 0;
    std::int64_t digits = 0;
    for (; IsDigit(p, end); ++p, ++digits) {
        if (value < kFull)
            value = value * 10.0 + DigitAt(p);
        else
            ++exponent;
    }
    if (p != end && *p == '.') {
        for (++p; IsDigit(p, end); ++p, ++digits) {
            if (value >= kFull) continue;
            value = value * 10.0 + DigitAt(p);
            --exponent;
        }
    }
    if (p != end && (*p == 'e' || *p == 'E')) exponent += ReadExponent(++p, end);
    cursor = p;

    // Too small for the scaling below, which would lose bits of a denormal double.
    if (exponent + digits < -39) return ScanToken(begin, end);

    value = Scale(value, exponent);
    return static_cast<float>(negative ? -value : value);
}

float Detail::ReadShortFloat(const char*& cursor, const char* end) {
    const char* p = cursor;
    const bool negative = p != end && *p == '-';
    if (negative || (p != end && *p == '+')) ++p;

    std::uint64_t digits = 0;
    std::ptrdiff_t exponent = 0;
    if (!TakeDigits(p, end, digits)) return ReadAnyFloat(cursor, end);
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

float ReadFloat(const char* begin, const char* end) {
    return Detail::ReadShortFloat(begin, end);
}

}  // namespace VokNumberText
