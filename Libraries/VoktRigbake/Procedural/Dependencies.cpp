#include "Procedural/Dependencies.h"

#include <algorithm>

std::vector<Dependency> Dependencies::GetSorted() const {
    std::vector<Dependency> sorted = entries;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [this](const Dependency& a, const Dependency& b) {
                         return order.IsBefore(a.before, b.before);
                     });
    return sorted;
}
