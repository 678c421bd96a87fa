#include "Procedural/Dependencies.h"

#include <algorithm>

std::vector<Dependency> Dependencies::GetSorted() const {
    std::vector<Dependency> sorted = entries;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Dependency& a, const Dependency& b) {
        return a.beforeNumber < b.beforeNumber;
    });
    return sorted;
}
