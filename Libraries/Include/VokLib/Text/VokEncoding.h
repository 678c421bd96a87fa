#pragma once

#include <string>
#include <string_view>

/// Between the parser's UTF-8 and the single bytes (ISO-8859-1) that texts are held in.
namespace VokEncoding {

/// True when a byte has its high bit set.
bool HasHighBytes(std::string_view text);

/// Throws a QelTools Exception "Failed to convert libxml string to ISO-8859-1 form." for malformed
/// UTF-8 and for a character beyond ISO-8859-1, which the single-byte form cannot hold.
std::string ToLatin1(std::string_view utf8);

std::string ToUtf8(std::string_view latin1);

}  // namespace VokEncoding
