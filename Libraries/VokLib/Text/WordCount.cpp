#include "Text/WordCount.h"

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
    const char* p = cursor;
    std::size_t left = wanted;
    bool inWord = false;
    const auto step = [&] {
        const bool isInk = IsInk(*p) != 0;
        if (isInk && !inWord) {
            if (left == 0) return false;
            --left;
        } else if (!isInk && left == 0) {
            return false;
        }
        inWord = isInk;
        ++p;
        return true;
    };
    bool more = p != end && step();
    // Blocks in which the last wanted word does not begin are passed by as a whole.
    while (more && end - p >= kBlock) {
        const std::size_t begins = CountBegins(p);
        if (begins >= left) break;
        left -= begins;
        p += kBlock;
        inWord = IsInk(p[-1]) != 0;
    }
    while (more && p != end) more = step();
    cursor = p;
    return wanted - left;
}

}  // namespace VokNumberText
