#include <QelTools/KeyedHash.h>

#include "Field61.h"

#include <bit>
#include <cstring>
#include <exception>
#include <random>

namespace QelTools::Common {

namespace {

/// Where a system gives no random numbers, one point is as good as another for honest documents.
std::uint64_t DrawPoint() {
    try {
        std::random_device random;
        const std::uint64_t drawn = (std::uint64_t{random()} << 32) ^ random();
        return 2 + drawn % (Field61::kPrime - 2);
    } catch (const std::exception&) {
        return 0x1234567812345671;
    }
}

std::uint64_t Point() {
    static const std::uint64_t point = DrawPoint();
    return point;
}

/// Neighbouring residues, as of names that differ in a digit, in places far from each other: the
/// end of MurmurHash3 (Appleby).
std::size_t Spread(std::uint64_t residue) {
    residue = (residue ^ (residue >> 33)) * 0xff51afd7ed558ccd;
    residue = (residue ^ (residue >> 33)) * 0xc4ceb9fe1a85ec53;
    return static_cast<std::size_t>(residue ^ (residue >> 33));
}

/// As many bytes as are surely below the prime.
constexpr std::size_t kPiece = 7;

/// Bytes as one number below 2^56, in the machine's order.
std::uint64_t PieceAt(const char* bytes, std::size_t count) {
    std::uint64_t piece = 0;
    std::memcpy(&piece, bytes, count);
    return std::endian::native == std::endian::big ? piece >> 8 : piece;
}

}  // namespace

// The length keeps texts apart that differ in zero bytes alone.
std::size_t KeyedHash::operator()(std::string_view text) const {
    const std::uint64_t point = Point();
    const char* at = text.data();
    std::size_t left = text.size();
    std::uint64_t value = 0;
    for (; left > kPiece; left -= kPiece, at += kPiece)
        value = Field61::Multiply(Field61::Reduce(value + PieceAt(at, kPiece)), point);
    if (left > 0) value = Field61::Multiply(Field61::Reduce(value + PieceAt(at, left)), point);
    return Spread(Field61::Reduce(value + text.size()));
}

std::size_t KeyedHash::operator()(std::uint64_t number) const {
    const std::uint64_t point = Point();
    const std::uint64_t high = Field61::Multiply(number >> 32, point);
    return Spread(Field61::Multiply(Field61::Reduce(high + (number & 0xffffffff)), point));
}

}  // namespace QelTools::Common
