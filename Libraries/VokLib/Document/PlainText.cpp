#include "Document/PlainText.h"

namespace {

/// Few enough for a count in one byte. Each count has a loop of its own, which compilers turn into
/// one comparison of sixteen characters at a time; all in one loop they leave as they are.
constexpr std::size_t kBlock = 128;

template <class Match>
std::size_t Count(const char* bytes, std::size_t size, Match match) {
    unsigned char count = 0;
    for (std::size_t i = 0; i < size; ++i)
        count = static_cast<unsigned char>(count + (match(bytes[i]) ? 1 : 0));
    return count;
}

/// Adds the line feeds up.
bool IsPlainBlock(const char* bytes, std::size_t size, std::size_t& lines) {
    const std::size_t feeds = Count(bytes, size, [](char c) { return c == '\n'; });
    lines += feeds;
    // Bytes from 0x80 up are negative.
    const auto isPrintable = [](char c) { return static_cast<signed char>(c) >= ' '; };
    return Count(bytes, size, isPrintable) + feeds == size &&
           Count(bytes, size, [](char c) { return c == '&'; }) == 0 &&
           Count(bytes, size, [](char c) { return c == ']'; }) == 0;
}

}  // namespace

bool IsPlainText(const char* bytes, std::size_t size, TextExtent& extent) {
    std::size_t lines = 0;
    std::size_t at = 0;
    for (; size - at >= kBlock; at += kBlock)
        if (!IsPlainBlock(bytes + at, kBlock, lines)) return false;
    if (!IsPlainBlock(bytes + at, size - at, lines)) return false;
    const char* lineBegin = bytes;
    if (lines != 0)
        for (lineBegin = bytes + size; lineBegin[-1] != '\n';) --lineBegin;
    extent.lines = lines;
    extent.columns = static_cast<std::size_t>(bytes + size - lineBegin);
    return true;
}
