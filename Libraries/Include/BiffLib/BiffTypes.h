#pragma once

#include <cstdint>

/// A binary layout: data, padding, labels and offsets to labels, written in either byte order.
namespace Biff {

/// Byte order of a written file. The value 1 asks for big-endian elements, every other value for
/// little-endian ones.
inline constexpr std::uint32_t kLittleEndian = 0;
inline constexpr std::uint32_t kBigEndian = 1;

/// What an offset counts from: the start of the file, or the offset's own place (a signed
/// distance).
inline constexpr std::uint32_t kAbsolute = 0;
inline constexpr std::uint32_t kRelative = 1;

/// Which kind of item a CWritable is.
inline constexpr std::uint32_t kNestedBlockItem = 0;
inline constexpr std::uint32_t kDataItem = 1;
inline constexpr std::uint32_t kAlignItem = 2;
inline constexpr std::uint32_t kLabelItem = 3;
inline constexpr std::uint32_t kOffsetItem = 4;

/// Which kind of block a CBlock is.
inline constexpr std::uint32_t kEmptyBlock = 0;
inline constexpr std::uint32_t kLeafBlock = 1;
inline constexpr std::uint32_t kBlockOfBlocks = 2;

}  // namespace Biff
