#include <VokLib/Text/VokNumberText.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include <QelTools/AsciiText.h>

#include "Text/FloatRead.h"

namespace VokNumberText {

namespace {

using QelTools::Common::EqualsIgnoringCase;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// White space as the C locale has it, which is more than what separates tokens.
std::string_view SkipSpace(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    return text;
}

bool TakeSign(std::string_view& text) {
    if (text.empty() || (text[0] != '-' && text[0] != '+')) return false;
    const bool negative = text[0] == '-';
    text.remove_prefix(1);
    return negative;
}

bool BeginsWithWord(std::string_view text, std::string_view word) {
    return EqualsIgnoringCase(text.substr(0, word.size()), word);
}

/// "inf", "infinity" or "nan". A scanner takes the longest text that could still become a word and
/// then looks whether it did: "infin" is nothing.
bool ScanWord(std::string_view text, float& value) {
    if (BeginsWithWord(text, "nan")) {
        value = std::numeric_limits<float>::quiet_NaN();
        return true;
    }
    if (!BeginsWithWord(text, "inf")) return false;
    if (BeginsWithWord(text, "infi") && !BeginsWithWord(text, "infinity")) return false;
    value = std::numeric_limits<float>::infinity();
    return true;
}

/// What a number stands for that is no float: infinity when it is too large, zero when it is too
/// small. Each digit is worth `digitWeight` of its exponent.
float BeyondRange(std::string_view digits, std::int64_t digitWeight, char exponentLetter) {
    constexpr std::int64_t kFar = std::int64_t{1} << 60;
    const auto isDigit = [&](char c) { return digitWeight == 1 ? IsDigit(c) : IsHexDigit(c); };
    std::int64_t magnitude = 0;
    bool significant = false;
    bool fraction = false;
    std::size_t i = 0;
    for (; i < digits.size(); ++i) {
        const char c = digits[i];
        if (c == '.' && !fraction) {
            fraction = true;
            continue;
        }
        if (!isDigit(c)) break;
        significant = significant || c != '0';
        if (significant && !fraction) magnitude += digitWeight;
        if (!significant && fraction) magnitude -= digitWeight;
    }
    if (i + 1 < digits.size() && QelTools::Common::ToLowerAscii(digits[i]) == exponentLetter) {
        std::string_view rest = digits.substr(i + 1);
        const bool negative = TakeSign(rest);
        std::int64_t exponent = 0;
        for (std::size_t at = 0; at < rest.size() && IsDigit(rest[at]) && exponent < kFar / 16;
             ++at)
            exponent = exponent * 10 + (rest[at] - '0');
        magnitude += negative ? -exponent : exponent;
    }
    return magnitude > 0 ? std::numeric_limits<float>::infinity() : 0.0f;
}

/// An exponent "p+-3" is none, but std::from_chars of GCC's library reads a sign behind the plus.
std::string_view WithoutTwoSigns(std::string_view text) {
    std::size_t letter = 0;
    while (letter < text.size() && (IsHexDigit(text[letter]) || text[letter] == '.')) ++letter;
    return text.substr(letter).size() > 2 && text[letter + 1] == '+' && !IsDigit(text[letter + 2])
               ? text.substr(0, letter)
               : text;
}

bool ScanDigits(std::string_view text, float& value) {
    const bool isHex = BeginsWithWord(text, "0x");
    if (isHex) text = WithoutTwoSigns(text.substr(2));
    const auto isDigitAt = [&](std::size_t at) {
        return at < text.size() && (isHex ? IsHexDigit(text[at]) : IsDigit(text[at]));
    };
    if (!isDigitAt(0) && !(!text.empty() && text[0] == '.' && isDigitAt(1))) return false;

    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value,
                        isHex ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range)
        value = BeyondRange(text, isHex ? 4 : 1, isHex ? 'p' : 'e');
    return true;
}

/// The common numbers of up to fifteen digits and a small exponent, with nothing in front or
/// behind; false for all others. Digits and power of ten are exact in a double, so that one
/// operation rounds the number correctly; rounding that to a float is right, too, unless it lies in
/// the middle between two floats (Clinger, How to read floating point numbers accurately).
bool TryScanShortFloat(const char* p, const char* end, float& value) {
    constexpr std::ptrdiff_t kMostDigits = 15;
    constexpr std::ptrdiff_t kExactPowers = 22;
    constexpr std::uint64_t kBelowFloat = (std::uint64_t{1} << 29) - 1;
    const bool negative = p != end && *p == '-';
    p += negative ? 1 : 0;
    std::uint64_t digits = 0;
    const char* const first = p;
    if (!Detail::TakeDigits(p, end, digits) || p == first) return false;
    std::ptrdiff_t count = p - first;
    std::ptrdiff_t exponent = 0;
    if (p != end && *p == '.') {
        const char* const fraction = ++p;
        if (!Detail::TakeDigits(p, end, digits) || p == fraction) return false;
        exponent = fraction - p;
        count -= exponent;
    }
    if (p != end && (*p == 'e' || *p == 'E') && end - p >= 2) {
        const bool isSmall = p[1] == '-';
        p += isSmall ? 2 : 1;
        std::uint64_t power = 0;
        const char* const begin = p;
        if (!Detail::TakeDigits(p, end, power) || p == begin || p - begin > 2) return false;
        exponent += static_cast<std::ptrdiff_t>(power) * (isSmall ? -1 : 1);
    }
    if (p != end || count > kMostDigits || exponent < -kExactPowers || exponent > kExactPowers)
        return false;
    double exact = static_cast<double>(digits);
    if (exponent < 0)
        exact /= Detail::kScales[static_cast<std::size_t>(-exponent)];
    else
        exact *= Detail::kScales[static_cast<std::size_t>(exponent)];
    if ((std::bit_cast<std::uint64_t>(exact) & kBelowFloat) == (kBelowFloat + 1) / 2) return false;
    value = static_cast<float>(negative ? -exact : exact);
    return true;
}

}  // namespace

bool TryScanFloat(std::string_view text, float& value) {
    if (TryScanShortFloat(text.data(), text.data() + text.size(), value)) return true;
    text = SkipSpace(text);
    const bool negative = TakeSign(text);
    const bool mayBeWord = !text.empty() && !IsDigit(text[0]);
    if (!(mayBeWord && ScanWord(text, value)) && !ScanDigits(text, value)) return false;
    if (negative) value = -value;
    return true;
}

bool TryScanInt(std::string_view text, int& value) {
    text = SkipSpace(text);
    const bool negative = TakeSign(text);
    if (text.empty() || !IsDigit(text[0])) return false;

    const std::uint64_t limit =
        static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0);
    std::uint64_t magnitude = 0;
    for (std::size_t i = 0; i < text.size() && IsDigit(text[i]); ++i) {
        const auto digit = static_cast<std::uint64_t>(text[i] - '0');
        magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
    }
    value = static_cast<int>(static_cast<std::uint32_t>(negative ? 0 - magnitude : magnitude));
    return true;
}

float ScanFloat(std::string_view text) {
    float value = 0;
    return TryScanFloat(text, value) ? value : 0.0f;
}

int ScanInt(std::string_view text) {
    int value = 0;
    return TryScanInt(text, value) ? value : 0;
}

std::size_t CutTokens(const char* text, std::size_t wanted, const char** begins,
                      const char** ends) {
    std::size_t found = 0;
    for (; found < wanted; ++found) {
        while (IsBlank(*text)) ++text;
        if (*text == '\0') break;
        begins[found] = text;
        while (*text != '\0' && !IsBlank(*text)) ++text;
        ends[found] = text;
    }
    return found;
}

}  // namespace VokNumberText
