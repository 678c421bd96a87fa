#pragma once

#include <VokLib/Text/VokNumberText.h>

#include <cstddef>
#include <cstdint>

#include "Text/EightBytes.h"

namespace VokNumberText::Detail {

/// A number and the first character behind what was used.
struct TakenInt {
    int value;
    const char* behind;
};

/// What ScanInt reads from the token at `cursor`. What can be read ends at `readable`; where that
/// is not `end`, a NUL stands there. Numbers of up to eighteen digits, which cannot leave 64 bits,
/// take a short way, those of up to seven without a sign a shorter one.
inline TakenInt ReadIntAt(const char* cursor, const char* end, const char* readable) {
    constexpr std::ptrdiff_t kEight = 8;
    if (EightBytes::kWorksHere && readable - cursor >= kEight) {
        const std::uint64_t eight = EightBytes::LoadDigits(cursor);
        const std::uint64_t others = EightBytes::MarkOthers(eight);
        const std::size_t length = EightBytes::FindMark(others);
        // Zeros come in front of the digits.
        if (others != 0 && length != 0)
            return {static_cast<int>(EightBytes::JoinDigits(eight << (64 - 8 * length))),
                    cursor + length};
    }

    constexpr std::ptrdiff_t kAlwaysFits = 18;
    const char* p = cursor;
    const bool negative = p != end && *p == '-';
    if (negative || (p != end && *p == '+')) ++p;

    const char* const digits = p;
    std::uint64_t magnitude = 0;
    for (unsigned digit = 0;
         p != end && (digit = static_cast<unsigned char>(*p) - static_cast<unsigned>('0')) <= 9;
         ++p)
        magnitude = magnitude * 10 + digit;
    if (p == digits || p - digits > kAlwaysFits) {
        // White space that parts no tokens, no number at all, or one that must be held.
        p = cursor;
        while (p != end && !IsBlank(*p)) ++p;
        return {ScanInt({cursor, static_cast<std::size_t>(p - cursor)}), p};
    }
    return {static_cast<int>(static_cast<std::uint32_t>(negative ? 0 - magnitude : magnitude)), p};
}

}  // namespace VokNumberText::Detail
