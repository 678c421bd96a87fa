#pragma once

#include <cstdint>
#include <iosfwd>

namespace Biff {

/// The stream's position as 32 bits; 0 when the stream cannot tell it. Throws an Exception past 4
/// gigabytes, for from there on no offset could be right.
std::uint32_t PositionOf(std::ostream& stream);

/// How many bytes lie between `position` and the next multiple of `multiple`; 0 for a multiple of
/// 0.
std::uint32_t PaddingAt(std::uint32_t position, std::uint32_t multiple);

/// Writes zero bytes up to a multiple of `multiple`.
void Pad(std::ostream& stream, std::uint32_t multiple);

/// Writes the low `bytes` bytes (at most 4) of `value` in the byte order that `endian` asks for.
void WriteNumber(std::ostream& stream, std::uint32_t value, std::uint32_t bytes,
                 std::uint32_t endian);

/// Throws an Exception when the stream has refused bytes or a seek.
void CheckStream(const std::ostream& stream);

}  // namespace Biff
