#pragma once

#include <cstddef>

/// What a document may hold. The bounds are far above what any exporter writes and low enough that
/// no document costs time or memory out of proportion to its size. Each refusal names the limit,
/// its value and the place.
namespace VokLimits {

/// Elements open at one time.
inline constexpr std::size_t kMaxElementDepth = 10000;
/// Attributes of one start tag: the parser compares each with all before it.
inline constexpr std::size_t kMaxAttributes = 256;
/// Bytes of one tag, comment, instruction or CDATA section, from its "<" to its ">".
inline constexpr std::size_t kMaxMarkupBytes = 4u << 20;
/// Bytes of the document type with its internal subset.
inline constexpr std::size_t kMaxDoctypeBytes = 128u << 10;
/// Choices ("|") in its declarations: the parser compares each word of a list with all before it.
inline constexpr std::size_t kMaxDoctypeChoices = 4096;
/// Different names of elements, attributes and instructions: the parser's table of names does not
/// grow with them.
inline constexpr std::size_t kMaxNames = 10000;
/// Values that counts may claim beyond what the text holds, apart from one for each byte of the
/// document.
inline constexpr std::size_t kFreePaddedValues = 1u << 16;

/// Objects that hold one another without being parents (a shape its blend targets, a mesh its blind
/// data): these are written and deleted one inside the other.
inline constexpr int kMaxHeldDepth = 256;

}  // namespace VokLimits
