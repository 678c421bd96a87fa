#pragma once

#include <cstddef>

/// What a document may hold. The bounds are far above what any exporter writes and low enough that no document costs
/// time or memory out of proportion to its size. Each refusal names the limit, its value and the place.
namespace VokLimits {

/// Elements open at one time.
inline constexpr std::size_t kMaxElementDepth = 10000;
/// Attributes of one start tag: the parser compares each with all before it.
inline constexpr std::size_t kMaxAttributes = 4096;
/// Bytes of one tag, comment or other markup from its "<" to its ">".
inline constexpr std::size_t kMaxMarkupBytes = 8u << 20;
/// Values that counts may claim beyond what the text holds, apart from one for each byte of the document.
inline constexpr std::size_t kFreePaddedValues = 1u << 16;

}  // namespace VokLimits
