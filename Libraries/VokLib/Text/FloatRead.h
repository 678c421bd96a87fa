#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Text/EightBytes.h"

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

/// The last of them that a double holds exactly.
inline constexpr std::size_t kExactScale = 22;
static_assert(PowerOfFive(kExactScale) < std::uint64_t{1} << 53 &&
              PowerOfFive(kExactScale + 1) > std::uint64_t{1} << 53);

/// Those up to kExactScale, and behind each its negative.
inline constexpr std::array<double, 2 * (kExactScale + 1)> kSignedScales = [] {
    std::array<double, 2 * (kExactScale + 1)> scales{};
    for (std::size_t i = 0; i < scales.size(); ++i)
        scales[i] = i % 2 == 0 ? kScales[i / 2] : -kScales[i / 2];
    return scales;
}();

/// The number at `cursor` by the steps of the definition, whatever its length; `cursor` moves
/// behind what was used.
float ReadAnyFloat(const char*& cursor, const char* end);

/// As ReadAnyFloat; numbers of up to fifteen digits, which are exact in an integer, take a short
/// way.
float ReadShortFloat(const char*& cursor, const char* end);

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

/// A number and the first character behind what was used; null when there is none.
struct TakenFloat {
    float value = 0;
    const char* behind = nullptr;
};

/// What TakeUsualFloat looks at: a sign, sixteen characters with the number's digits, and "e-9".
inline constexpr std::ptrdiff_t kReadAhead = 20;

/// What the writer makes of nearly every number, eight characters at a time: a sign or none, up to
/// seven digits, a point, digits to fourteen in all, perhaps "e-" and one digit, and then no ink.
/// None for any other form and where fewer than kReadAhead characters can be read.
inline TakenFloat TakeUsualFloat(const char* p, const char* readable) {
    using namespace EightBytes;
    if (!kWorksHere || readable - p < kReadAhead) return {};
    // Signs come at random, so no branch hangs on them.
    const bool isNegative = *p == '-';
    p += static_cast<int>(isNegative) | static_cast<int>(*p == '+');
    const std::uint64_t low = LoadDigits(p);
    const std::uint64_t others = MarkOthers(low);
    if (others == 0) return {};
    const std::size_t whole = FindMark(others);
    if (p[whole] != '.') return {};

    // The whole digits move up over the point, so that seven digits stand behind a zero. What the
    // number does not have is a zero behind it, too, and in `scale`: digits and scale stay exact
    // in a double, and their quotient is the same to the bit.
    const std::uint64_t point = FirstMark(others);
    std::uint64_t digits = (low & BytesBefore(point)) << 8 | (low & BytesBehind(point));
    std::size_t scale = 7 - whole;
    if (others == point) {
        const std::uint64_t high = LoadDigits(p + 8);
        const std::uint64_t ends = MarkOthers(high);
        if (ends == 0) return {};
        const std::size_t length = FindMark(ends);
        digits = JoinDigits(digits) * 100000000 + JoinDigits(high & kFirstBytes[length]);
        scale += 8;
        p += 8 + length;
    } else {
        const std::size_t length = FindMark(others ^ point);
        digits = JoinDigits(digits & kFirstBytes[length]);
        p += length;
    }
    if (IsInk(*p)) {
        if (*p != 'e' || p[1] != '-' || DigitAt(p + 2) > 9 || IsInk(p[3])) return {};
        scale += DigitAt(p + 2);
        p += 3;
        if (scale > kExactScale) return {};
    }
    const double exact = static_cast<double>(static_cast<std::int64_t>(digits));
    return {static_cast<float>(exact / kSignedScales[2 * scale + (isNegative ? 1 : 0)]), p};
}

/// As ReadAnyFloat. What can be read ends at `readable`; where that is not `end`, a NUL stands
/// there.
inline TakenFloat ReadFloatAt(const char* cursor, const char* end, const char* readable) {
    if (const TakenFloat usual = TakeUsualFloat(cursor, readable); usual.behind != nullptr)
        return usual;
    const float value = ReadShortFloat(cursor, end);
    return {value, cursor};
}

}  // namespace VokNumberText::Detail
