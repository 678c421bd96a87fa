#pragma once

#include <cstdint>

/// The field of 2^61 - 1 elements, a Mersenne prime; residues are below it.
namespace QelTools::Common::Field61 {

inline constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61) - 1;

/// The residue of any number, for 2^61 is 1 here.
constexpr std::uint64_t Reduce(std::uint64_t number) {
    const std::uint64_t folded = (number >> 61) + (number & kPrime);
    return folded >= kPrime ? folded - kPrime : folded;
}

/// The product of two residues, by halves of 30 and 31 bits: not every compiler has products of
/// 128.
constexpr std::uint64_t Multiply(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kLow31 = (std::uint64_t{1} << 31) - 1;
    constexpr std::uint64_t kLow30 = (std::uint64_t{1} << 30) - 1;
    const std::uint64_t aHigh = a >> 31, aLow = a & kLow31;
    const std::uint64_t bHigh = b >> 31, bLow = b & kLow31;
    const std::uint64_t middle = aHigh * bLow + aLow * bHigh;
    // 2^62 is 2; of the middle, times 2^31, what is from 2^61 on counts from 1 again.
    return Reduce(2 * (aHigh * bHigh) + (middle >> 30) + ((middle & kLow30) << 31) + aLow * bLow);
}

}  // namespace QelTools::Common::Field61
