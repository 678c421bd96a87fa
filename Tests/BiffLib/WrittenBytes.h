#pragma once

#include <BiffLib/CBlock.h>

#include <sstream>
#include <string>
#include <string_view>

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

/// The bytes of a literal, zeros included.
template <std::size_t N>
std::string Bytes(const char (&text)[N]) {
    return std::string(text, N - 1);
}
