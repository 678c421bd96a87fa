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

float ReadFloat(const char* begin, const char* end) {
    return Detail::ReadFloatAt(begin, end, end);
}

}  // namespace VokNumberText
