#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Eight characters of a text at once, as the bytes of an integer: the first character in the
/// lowest byte. A mark is the highest bit of a byte.
namespace VokNumberText::EightBytes {

/// Whether what follows works on this machine.
inline constexpr bool kWorksHere = std::endian::native == std::endian::little;

inline constexpr std::uint64_t kMarks = 0x8080808080808080u;

/// The eight characters at `p` less "0": digits are 0 to 9 then and everything else is above.
inline std::uint64_t LoadDigits(const char* p) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, p, sizeof bytes);
    return bytes ^ 0x3030303030303030u;
}

/// False for blanks, what else stands below them, and NUL.
inline bool IsInk(char c) {
    return static_cast<unsigned char>(c) > ' ';
}

/// Marks what is no digit. Behind a character that is not ASCII a digit may be marked, too.
inline std::uint64_t MarkOthers(std::uint64_t digits) {
    return (digits | (digits + 0x7676767676767676u)) & kMarks;
}

inline std::uint64_t FirstMark(std::uint64_t marks) {
    return marks & (0 - marks);
}

/// The place of the first mark, of which there is one.
inline std::size_t FindMark(std::uint64_t marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

/// All bits of the bytes in front of the only mark.
inline std::uint64_t BytesBefore(std::uint64_t mark) {
    return (mark >> 7) - 1;
}

/// All bits of the bytes behind the only mark.
inline std::uint64_t BytesBehind(std::uint64_t mark) {
    return 0 - (mark << 1);
}

/// All bits of the first bytes.
inline constexpr std::array<std::uint64_t, 8> kFirstBytes = [] {
    std::array<std::uint64_t, 8> masks{};
    for (std::size_t i = 0; i < masks.size(); ++i) masks[i] = (std::uint64_t{1} << 8 * i) - 1;
    return masks;
}();

/// The number that eight digits stand for: neighbours are joined to numbers of two, four and eight
/// digits.
inline std::uint64_t JoinDigits(std::uint64_t digits) {
    constexpr std::uint64_t kPairs = 0x000000FF000000FFu;
    constexpr std::uint64_t kMillionAndHundred = (std::uint64_t{1000000} << 32) + 100;
    constexpr std::uint64_t kTenThousandAndOne = (std::uint64_t{10000} << 32) + 1;
    digits = digits * 10 + (digits >> 8);
    return ((digits & kPairs) * kMillionAndHundred +
            ((digits >> 16) & kPairs) * kTenThousandAndOne) >>
           32;
}

}  // namespace VokNumberText::EightBytes
