#pragma once

#include <cstddef>

/// What a document, or a list of its files, may be written with: defaults that are written out come
/// to less than twenty times the document.
inline constexpr std::size_t MostWritten(std::size_t documentBytes) {
    constexpr std::size_t kFreeBytes = 64u << 20;
    constexpr std::size_t kMostGrowth = 32;
    return kFreeBytes + kMostGrowth * documentBytes;
}

/// Thrown where a limit would be exceeded, so that nothing is made that nobody takes.
struct GrowthBeyondLimit {};
