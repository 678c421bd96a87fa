#pragma once

#include <cstddef>
#include <limits>

/// Counts of what hostile documents claim: they end at the greatest number instead of passing it.
inline constexpr std::size_t kGreatest = std::numeric_limits<std::size_t>::max();

constexpr std::size_t SumOf(std::size_t a, std::size_t b) {
    return a > kGreatest - b ? kGreatest : a + b;
}

constexpr std::size_t ProductOf(std::size_t a, std::size_t b) {
    return b != 0 && a > kGreatest / b ? kGreatest : a * b;
}
