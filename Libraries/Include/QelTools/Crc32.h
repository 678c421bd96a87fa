#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace QelTools::Common {

namespace Detail {

consteval std::array<std::uint32_t, 256> MakeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1u) != 0 ? 0xEDB88320u : 0u);
        table[i] = value;
    }
    return table;
}

inline constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

}  // namespace Detail

/// CRC-32 of IEEE 802.3 in reflected form (polynomial 0xEDB88320, initial value all ones, final
/// complement). Bytes count as unsigned. The empty text gives 0.
constexpr std::uint32_t Crc32(std::string_view text) {
    std::uint32_t value = 0xFFFFFFFFu;
    for (const char c : text)
        value = (value >> 8) ^ Detail::kCrcTable[(value & 0xFFu) ^ static_cast<unsigned char>(c)];
    return ~value;
}

}  // namespace QelTools::Common
