#pragma once

#include <algorithm>
#include <ctime>

#include "Support/ThisSystem.h"

/// On Windows std::clock is the time that passes, not what this process has had of it.
inline constexpr bool kHasProcessorTime = !kIsWindows;

/// What `work` costs for four times the size, as a multiple of what it costs for `size`: 4 to 6
/// where the cost is linear, 16 where it is quadratic. It is the processor time of this process
/// that counts, each the least of three, so that other processes have little say.
template <class Work>
double CostOfFourTimes(int size, Work&& work) {
    const auto leastOfThree = [&](int count) {
        std::clock_t least = 0;
        for (int i = 0; i < 3; ++i) {
            const std::clock_t start = std::clock();
            work(count);
            const std::clock_t taken = std::clock() - start;
            least = i == 0 ? taken : std::min(least, taken);
        }
        return static_cast<double>(std::max<std::clock_t>(least, 1));
    };
    const double once = leastOfThree(size);
    return leastOfThree(4 * size) / once;
}

/// What a cost in proportion to the size stays below.
inline constexpr double kMostOfFourTimes = 9;
