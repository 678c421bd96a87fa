#pragma once

#include <BiffLib/CBlock.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Support/ThrownText.h"

/// What the block writes to a stream in one byte order.
inline std::string Written(Biff::CBlock& block, std::uint32_t endian) {
    std::ostringstream stream;
    block.Write(stream, endian);
    return stream.str();
}

inline std::string Little(Biff::CBlock& block) {
    return Written(block, Biff::kLittleEndian);
}
inline std::string Big(Biff::CBlock& block) {
    return Written(block, Biff::kBigEndian);
}

/// Elements that are told in little-endian order, as this machine holds them.
inline std::vector<std::uint8_t> InHostOrder(std::vector<std::uint8_t> bytes, std::ptrdiff_t size) {
    if (std::endian::native == std::endian::big)
        for (auto at = bytes.begin(); at != bytes.end(); at += size) std::reverse(at, at + size);
    return bytes;
}

/// The bytes of a literal, zeros included.
template <std::size_t N>
std::string Bytes(const char (&text)[N]) {
    return std::string(text, N - 1);
}
