#pragma once

#include <vector>

/// Which of these numbers, no two alike, belong to a longest ascending run of them: of things that
/// came into another order, as many as can be said to have stayed.
std::vector<bool> LongestAscending(const std::vector<int>& numbers);
