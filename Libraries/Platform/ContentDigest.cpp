#include "ContentDigest.h"

namespace Platform {

// Fowler, Noll and Vo's, version 1a.
void ContentDigest::Add(const char* bytes, std::size_t count) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    for (std::size_t i = 0; i < count; ++i)
        digest = (digest ^ static_cast<unsigned char>(bytes[i])) * kPrime;
    size += count;
}

}  // namespace Platform
