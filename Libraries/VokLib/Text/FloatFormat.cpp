#include <VokLib/Text/VokNumberText.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Text/Wide.h"

namespace VokNumberText {

namespace {

constexpr int kDigitCount = 9;
constexpr std::uint64_t kTenToNine = 1'000'000'000;

/// A positive float: mantissa x 2^exponent, exactly.
struct Binary {
    std::uint32_t mantissa;
    int exponent;
};

/// Decimal digits, at most nine, and the decimal exponent of the first.
struct Decimal {
    std::uint64_t digits;
    int exponent;
};

/// The whole part of twice a number, and whether anything is left behind it.
struct Doubled {
    std::uint64_t whole;
    bool rest;
};

Binary Split(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value) & 0x7FFFFFFFu;
    const std::uint32_t fraction = bits & 0x7FFFFFu;
    const int biased = static_cast<int>(bits >> 23);
    if (biased == 0) return {fraction, -149};
    return {fraction | 0x800000u, biased - 150};
}

/// 2 x number x 10^power, cut to a whole number.
Doubled ScaleDoubled(const Binary& number, int power) {
    Wide wide(number.mantissa);
    int shift = number.exponent + power + 1;
    bool rest = false;
    if (power >= 0) {
        wide.MultiplyByPowerOfFive(power);
        if (shift < 0) rest = wide.ShiftRight(-shift);
    }
    if (shift > 0) wide.ShiftLeft(shift);
    if (power < 0) rest = wide.DivideByPowerOfFive(-power);
    return {wide.Low64(), rest};
}

/// The first nine digits, rounded to nearest, a tie to the even digit. A carry through trailing
/// nines takes the nines away, so that fewer digits may come back.
Decimal RoundToNine(const Binary& number) {
    // log10(2) in 18 binary places: never above the true exponent, at most one below it.
    const int topBit = number.exponent + std::bit_width(number.mantissa) - 1;
    int exponent = (topBit * 78913) >> 18;
    Doubled scaled = ScaleDoubled(number, kDigitCount - 1 - exponent);
    if (scaled.whole >= 2 * kTenToNine) {
        ++exponent;
        scaled = ScaleDoubled(number, kDigitCount - 1 - exponent);
    }
    std::uint64_t digits = scaled.whole / 2;
    const bool half = (scaled.whole & 1) != 0;
    if (half && (scaled.rest || (digits & 1) != 0)) {
        while (digits % 10 == 9) digits /= 10;
        if (++digits == 1) ++exponent;
    }
    return {digits, exponent};
}

class Writer {
  public:
    explicit Writer(char* out) : begin(out), end(out) {}

    void Put(char c) { *end++ = c; }
    void Put(const char* text, int count) {
        if (count <= 0) return;
        std::memcpy(end, text, static_cast<std::size_t>(count));
        end += count;
    }
    void Zeros(int count) {
        for (; count > 0; --count) Put('0');
    }
    /// The digits behind a point; a number never ends in the point.
    void Fraction(const char* text, int count) {
        Put('.');
        if (count > 0)
            Put(text, count);
        else
            Put('0');
    }
    void Integer(int value) { end = std::to_chars(end, end + 8, value).ptr; }
    std::size_t Length() const { return static_cast<std::size_t>(end - begin); }

  private:
    char* begin;
    char* end;
};

std::size_t WriteWord(std::string_view word, char* out) {
    return word.copy(out, word.size());
}

std::size_t WriteDecimal(const Decimal& decimal, bool negative, char* out) {
    const int k = decimal.exponent;
    char text[16];
    text[0] = '-';
    char* const first = negative ? text + 1 : text;
    int length =
        static_cast<int>(std::to_chars(first, text + sizeof text, decimal.digits).ptr - text);

    // The sign counts as a place here, and the limit k + 1 knows nothing of it.
    while (length - 1 > k + 1 && length > 1 && text[length - 1] == '0') --length;

    const int count = length - (negative ? 1 : 0);
    Writer writer(out);
    if (negative) writer.Put('-');
    if (k >= kDigitCount || (k < 0 && k - length <= -kDigitCount)) {
        writer.Put(first[0]);
        writer.Fraction(first + 1, count - 1);
        writer.Put('e');
        writer.Integer(k);
    } else if (k >= 0) {
        const int whole = std::min(count, k + 1);
        writer.Put(first, whole);
        writer.Zeros(k + 1 - whole);
        writer.Fraction(first + whole, count - whole);
    } else {
        writer.Put("0.", 2);
        writer.Zeros(-k - 1);
        writer.Put(first, count);
    }
    return writer.Length();
}

}  // namespace

std::size_t FormatFloatTo(float value, char* out) {
    if (std::isnan(value)) return WriteWord("NAN", out);
    if (std::isinf(value)) return WriteWord(value < 0 ? "-INF" : "INF", out);
    const bool negative = std::signbit(value);
    if (value == 0) return WriteWord(negative ? "-0.0" : "0.0", out);
    return WriteDecimal(RoundToNine(Split(value)), negative, out);
}

std::string FormatFloat(float value) {
    char text[kMaxFloatText];
    return std::string(text, FormatFloatTo(value, text));
}

}  // namespace VokNumberText
