#pragma once

#include <cstddef>

/// Counts what is allocated, through the sanitizer's hooks.
namespace MemoryPeak {

/// Once, before the first Reset.
void Install();
/// From here on the peak is counted.
void Reset();
/// The most bytes that were held at one time since Reset, above what was held then.
std::size_t Get();

}  // namespace MemoryPeak
