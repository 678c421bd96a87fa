#pragma once

#include <cstddef>
#include <cstdint>

/// Random numbers that are the same on every machine for a seed.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    /// From 0 to `count` - 1; 0 for a count of 0.
    std::size_t Below(std::size_t count) {
        return count == 0 ? 0 : static_cast<std::size_t>(Next() % count);
    }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    /// One of the elements of a list that is not empty.
    template <class List>
    const auto& Pick(const List& list) {
        return *(list.begin() + static_cast<std::ptrdiff_t>(Below(list.size())));
    }

  private:
    /// SplitMix64.
    std::uint64_t Next() {
        std::uint64_t z = (state += 0x9E3779B97F4A7C15u);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    std::uint64_t state;
};
