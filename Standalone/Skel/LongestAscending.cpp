#include "LongestAscending.h"

#include <algorithm>
#include <cstddef>

std::vector<bool> LongestAscending(const std::vector<int>& numbers) {
    std::vector<std::size_t> tails;  // the place of the lowest end of a run of each length
    std::vector<int> previous(numbers.size(), -1);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto at = std::lower_bound(
            tails.begin(), tails.end(), numbers[i],
            [&numbers](std::size_t place, int number) { return numbers[place] < number; });
        if (at != tails.begin()) previous[i] = static_cast<int>(*(at - 1));
        if (at == tails.end())
            tails.push_back(i);
        else
            *at = i;
    }
    std::vector<bool> isKept(numbers.size(), false);
    for (int i = tails.empty() ? -1 : static_cast<int>(tails.back()); i >= 0;
         i = previous[static_cast<std::size_t>(i)])
        isKept[static_cast<std::size_t>(i)] = true;
    return isKept;
}
