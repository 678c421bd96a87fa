#pragma once

// For a fuzzer whose inputs are documents, flag bytes ahead of them or not: the mutator over the
// element tree in the place of libFuzzer's own, which still gets its turn. Included once by a
// fuzzer's source.

#include "Support/DocumentMutations.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

/// One of so many changes is of bytes, not of elements.
constexpr unsigned kByteMutations = 24;

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
    if (seed % kByteMutations == 0) return LLVMFuzzerMutate(data, size, maxSize);
    const std::string changed = MutateDocument({reinterpret_cast<const char*>(data), size}, seed);
    if (changed.empty() || changed.size() > maxSize) return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data, changed.data(), changed.size());
    return changed.size();
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data, std::size_t size,
                                                 const std::uint8_t* other, std::size_t otherSize,
                                                 std::uint8_t* out, std::size_t maxSize,
                                                 unsigned seed) {
    const std::string crossed =
        CrossDocuments({reinterpret_cast<const char*>(data), size},
                       {reinterpret_cast<const char*>(other), otherSize}, seed);
    if (crossed.size() > maxSize) return 0;
    std::memcpy(out, crossed.data(), crossed.size());
    return crossed.size();
}
