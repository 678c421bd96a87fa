#pragma once

#include <VokLib/Text/VokNumberText.h>

#include <cstddef>
#include <cstdint>

namespace VokNumberText::Detail {

/// What ScanInt reads from the token at `cursor`, which moves behind what was used. Numbers of up
/// to eighteen digits, which cannot leave 64 bits, take a short way.
inline int ReadIntAt(const char*& cursor, const char* end) {
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
        const char* const begin = cursor;
        while (cursor != end && !IsBlank(*cursor)) ++cursor;
        return ScanInt({begin, static_cast<std::size_t>(cursor - begin)});
    }
    cursor = p;
    return static_cast<int>(static_cast<std::uint32_t>(negative ? 0 - magnitude : magnitude));
}

}  // namespace VokNumberText::Detail
