#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Numbers of a document as text, the same on every machine: no locale and no runtime library
/// decides a digit.
namespace VokNumberText {

/// The fast float reader: an optional sign, digits, a fraction and an exponent, accumulated in
/// double precision and scaled once; reading stops at the first character that does not fit, and
/// what follows is ignored. The words that FormatFloat writes for infinities and not-a-number are
/// no numbers to it.
float ReadFloat(const char* begin, const char* end);

/// What scanf reads with "%f" and "%d" from this text in the C locale; 0 where it would read
/// nothing. An integer too large is held at the bounds of 64 bits, of which the low 32 are the
/// result: the texts of all unsigned numbers keep their bits.
float ScanFloat(std::string_view text);
int ScanInt(std::string_view text);
/// As ScanFloat and ScanInt, with the answer whether one item was read.
bool TryScanFloat(std::string_view text, float& value);
bool TryScanInt(std::string_view text, int& value);

/// True for the four characters that separate tokens: blank, tab, line feed, carriage return.
constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Cuts up to `wanted` tokens from `text` (which ends at a NUL) into `begins` and `ends`; returns
/// how many there were.
std::size_t CutTokens(const char* text, std::size_t wanted, const char** begins, const char** ends);

/// Nine significant decimal digits, correctly rounded, ties to even, trimmed by the format's own
/// rule: "1.0", "1.00000001e-1", "-0.0", "INF", "-INF", "NAN".
std::string FormatFloat(float value);

/// Writes what FormatFloat returns to `out`, which has room for kMaxFloatText characters; returns
/// the length.
inline constexpr std::size_t kMaxFloatText = 31;
std::size_t FormatFloatTo(float value, char* out);

}  // namespace VokNumberText
