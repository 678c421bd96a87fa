#include <BiffLib/COffset.h>

#include <QelTools/Exception.h>

#include <array>
#include <bit>
#include <cstdlib>
#include <ostream>

#include "LabelTable.h"
#include "StreamWords.h"

using QelTools::Common::TextException;

namespace Biff {

namespace {

constexpr std::uint32_t kMaxStorage = 4;

constexpr char kNoStorage[] = "Offset storage must be at least one byte.";
constexpr char kStorageTooLarge[] = "Offsets storage of more than 4 bytes are not supported.";
constexpr char kNoStride[] = "Offset strides must be at least 1 byte.";
constexpr char kUnknownBase[] = "Unknown offset base type.";
constexpr char kUnknownOrigin[] = "Unknown offset origin method.";
constexpr char kMisaligned[] = "Target of offset is not correctly aligned.";
constexpr char kTooWide[] = "Offset is too large to fit in given storage.";

char PlaceholderOf(std::uint32_t origin) {
    switch (origin) {
        case kAbsolute:
            return '\xFF';
        case kRelative:
            return '\0';
        default:
            throw TextException(kUnknownBase);
    }
}

std::int64_t DistanceOf(const COffset& offset, std::uint32_t target) {
    switch (offset.origin) {
        case kAbsolute:
            return target;
        case kRelative: {
            // A file is one image of 32-bit positions, so the distance wraps at 32 bits too.
            const std::uint32_t from = offset.position - offset.position % offset.stride;
            return static_cast<std::int32_t>(target - from);
        }
        default:
            throw TextException(kUnknownOrigin);
    }
}

std::int64_t DivideAwayFromZero(std::int64_t value, std::int64_t divisor) {
    const std::int64_t quotient = value / divisor;
    if (value % divisor == 0) return quotient;
    return value < 0 ? quotient - 1 : quotient + 1;
}

// A relative number keeps one bit for its sign, and by this count the lowest two's complement
// number of a width does not fit: readers negate these numbers.
std::uint32_t BitsOf(std::int64_t value, std::uint32_t origin) {
    if (value == 0) return 0;
    const auto magnitude = static_cast<std::uint64_t>(std::abs(value));
    return static_cast<std::uint32_t>(std::bit_width(magnitude)) + (origin == kRelative ? 1 : 0);
}

}  // namespace

COffset::COffset(std::uint32_t targetLabel, std::uint32_t from, std::uint32_t bytes,
                 std::uint32_t strideBytes)
    : CWritable(kOffsetItem),
      label(targetLabel),
      origin(from),
      storage(bytes),
      stride(strideBytes) {
    if (storage == 0) throw TextException(kNoStorage);
    if (storage > kMaxStorage) throw TextException(kStorageTooLarge);
    if (stride == 0) throw TextException(kNoStride);
}

void COffset::Write(std::ostream& stream, std::uint32_t) {
    position = PositionOf(stream);
    std::array<char, kMaxStorage> placeholder;
    placeholder.fill(PlaceholderOf(origin));
    stream.write(placeholder.data(), storage);
}

std::uint32_t COffset::SizeAt(std::uint32_t) const {
    return storage;
}

void COffset::Resolve(std::ostream& stream, std::uint32_t endian) const {
    // A table that a file does not have leaves its label unwritten; the placeholder then says so.
    if (!LabelTable::Contains(label)) return;
    const std::uint32_t target = LabelTable::PositionOfLabel(label);
    if (target % stride != 0) throw TextException(kMisaligned);
    const std::int64_t value = DivideAwayFromZero(DistanceOf(*this, target), stride);
    if (BitsOf(value, origin) > storage * 8) throw TextException(kTooWide);
    stream.seekp(position);
    WriteNumber(stream, static_cast<std::uint32_t>(value), storage, endian);
}

}  // namespace Biff
