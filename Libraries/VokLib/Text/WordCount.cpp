#include "Text/WordCount.h"

#include <bit>
#include <cstdint>

namespace VokNumberText {

namespace {

/// What is counted at once: few enough for a count in one byte, so that compilers work on sixteen
/// characters with one instruction.
constexpr std::ptrdiff_t kBlock = 64;

/// 1 for a character of a word. XML lets no other control characters into a text than those that
/// part words.
constexpr unsigned char IsInk(char c) {
    return static_cast<unsigned char>(c) > ' ' ? 1 : 0;
}

// Of eight characters each has a bit, the highest of its byte; the first has the lowest byte.
constexpr std::ptrdiff_t kEight = 8;
constexpr std::uint64_t kAllOfEight = 0x8080808080808080u;
constexpr std::uint64_t kFirstOfEight = 0x80u;
constexpr std::uint64_t kLastOfEight = kFirstOfEight << 56;

/// Those of eight characters that IsInk holds for.
std::uint64_t InkOfEight(const char* p) {
    std::uint64_t bytes = 0;
    for (int i = 0; i < kEight; ++i)
        bytes |= std::uint64_t{static_cast<unsigned char>(p[i])} << (8 * i);
    // What is above a blank carries into the bit when 0x5F is added, or has it set.
    return (((bytes & ~kAllOfEight) + 0x5F5F5F5F5F5F5F5Fu) | bytes) & kAllOfEight;
}

std::size_t CountEight(std::uint64_t bits) {
    return static_cast<std::size_t>((bits >> 7) * 0x0101010101010101u >> 56);
}

/// How many words begin in a block; the character in front of it can be read.
std::size_t CountBegins(const char* block) {
    unsigned char begins = 0;
    for (std::ptrdiff_t i = 0; i < kBlock; ++i)
        begins = static_cast<unsigned char>(begins + (IsInk(block[i]) & ~IsInk(block[i - 1])));
    return begins;
}

}  // namespace

void WordCount::Add(const char* bytes, std::size_t length) {
    const char* p = bytes;
    const char* const end = bytes + length;
    const auto step = [&] {
        const bool isInk = IsInk(*p++) != 0;
        words += isInk && !inWord ? 1 : 0;
        inWord = isInk;
    };
    if (p != end) step();
    for (; end - p >= kBlock; p += kBlock) words += CountBegins(p);
    if (p != bytes) inWord = IsInk(p[-1]) != 0;
    while (p != end) step();
}

std::size_t SkipWords(const char*& cursor, const char* end, std::size_t wanted) {
    if (wanted == 0) return 0;
    const char* p = cursor;
    std::size_t left = wanted;  // words that have not begun
    bool inWord = false;
    const auto step = [&] {
        const bool isInk = IsInk(*p) != 0;
        if (left == 0 && !(isInk && inWord)) return false;
        left -= isInk && !inWord ? 1 : 0;
        inWord = isInk;
        ++p;
        return true;
    };
    bool more = p != end && step();
    // The last wanted word does not begin in these.
    while (left > kBlock / 2 && end - p >= kBlock) {
        left -= CountBegins(p);
        p += kBlock;
        inWord = IsInk(p[-1]) != 0;
    }
    while (more && end - p >= kEight) {
        const std::uint64_t ink = InkOfEight(p);
        std::uint64_t begins = ink & ~(ink << 8 | (inWord ? kFirstOfEight : 0));
        std::uint64_t ends = ~ink & kAllOfEight;
        const std::size_t count = CountEight(begins);
        if (count < left) {
            left -= count;
        } else {
            if (left != 0) {
                while (--left != 0) begins &= begins - 1;
                const std::uint64_t last = begins & (0 - begins);
                ends &= ~(last | (last - 1));
            }
            if (ends != 0) {
                p += std::countr_zero(ends) / 8;
                break;
            }
        }
        inWord = (ink & kLastOfEight) != 0;
        p += kEight;
    }
    while (more && p != end) more = step();
    cursor = p;
    return wanted - left;
}

}  // namespace VokNumberText
