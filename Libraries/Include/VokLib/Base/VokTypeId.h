#pragma once

#include <QelTools/Crc32.h>

#include <cstdint>
#include <string_view>

/// Identifies a scene type by the name of its element: the complement of the name's CRC-32. The
/// empty name has the identifier 0xFFFFFFFF; 0 stands for "no type".
using VokTypeId = std::uint32_t;

constexpr VokTypeId MakeTypeId(std::string_view elementName) {
    return ~QelTools::Common::Crc32(elementName);
}
