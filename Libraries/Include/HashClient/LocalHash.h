#pragma once

#include <QelTools/Crc32.h>

#include <cstdint>
#include <string_view>

namespace QelHashClient {

/// The hash of a string where no registry is asked, and the one that our own registry gives: the
/// register of the CRC-32 as it stands, without the final complement. Files depend on it. Bytes
/// count as unsigned; the empty string gives all ones.
constexpr std::uint32_t LocalHash(std::string_view string) {
    return ~QelTools::Common::Crc32(string);
}

}  // namespace QelHashClient
