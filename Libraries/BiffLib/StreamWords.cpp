#include "StreamWords.h"

#include <BiffLib/BiffTypes.h>
#include <QelTools/Exception.h>

#include <algorithm>
#include <array>
#include <limits>
#include <ostream>

namespace Biff {

namespace {

constexpr char kTooLarge[] = "A Biff file of more than 4 gigabytes is not supported.";
constexpr char kStreamFailed[] = "Failed to write the Biff: the output did not take all of it.";

}  // namespace

std::uint32_t PositionOf(std::ostream& stream) {
    const std::streamoff position = stream.tellp();
    if (position < 0) return 0;
    if (position > std::streamoff{std::numeric_limits<std::uint32_t>::max()})
        QelTools::Common::ThrowException(kTooLarge);
    return static_cast<std::uint32_t>(position);
}

std::uint32_t PaddingAt(std::uint32_t position, std::uint32_t multiple) {
    if (multiple == 0 || position % multiple == 0) return 0;
    return multiple - position % multiple;
}

void Pad(std::ostream& stream, std::uint32_t multiple) {
    static constexpr std::array<char, 256> kZeros{};
    std::uint32_t left = PaddingAt(PositionOf(stream), multiple);
    while (left != 0 && stream) {
        const std::uint32_t step = std::min<std::uint32_t>(left, kZeros.size());
        stream.write(kZeros.data(), step);
        left -= step;
    }
}

void WriteNumber(std::ostream& stream, std::uint32_t value, std::uint32_t bytes,
                 std::uint32_t endian) {
    std::array<char, 4> text{};
    for (std::uint32_t i = 0; i < bytes; ++i) {
        const std::uint32_t place = endian == kBigEndian ? bytes - 1 - i : i;
        text[i] = static_cast<char>(static_cast<unsigned char>(value >> (8 * place)));
    }
    stream.write(text.data(), bytes);
}

void CheckStream(const std::ostream& stream) {
    if (stream.fail()) QelTools::Common::ThrowException(kStreamFailed);
}

}  // namespace Biff
