#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

/// Values by index in ascending order, held compactly: a single one, as most attributes have, takes
/// no memory besides. Writing in any order stays cheap: values that do not come in rising order are
/// put in order at the next reading; of two values for one index the later stands. What Find and
/// InOrder return is valid until the next Set.
template <class T>
class VokIndexedValues {
  public:
    struct Entry {
        int index;
        T value;
    };

    void Set(int index, T value) {
        if (entries.empty() && (!hasSingle || single.index == index)) {
            single = {index, std::move(value)};
            hasSingle = true;
            return;
        }
        if (hasSingle) {
            entries.push_back(std::move(single));
            hasSingle = false;
        }
        if (sorted && index <= entries.back().index) {
            const auto found = LowerBound(index);
            if (found->index == index) {
                found->value = std::move(value);
                return;
            }
            sorted = false;
        }
        entries.push_back({index, std::move(value)});
    }

    /// Null for an index that holds nothing.
    const T* Find(int index) const {
        if (hasSingle) return single.index == index ? &single.value : nullptr;
        Sort();
        const auto found = LowerBound(index);
        return found != entries.end() && found->index == index ? &found->value : nullptr;
    }

    std::span<const Entry> InOrder() const {
        if (hasSingle) return {&single, 1};
        Sort();
        return entries;
    }

  private:
    auto LowerBound(int index) const {
        return std::lower_bound(
            entries.begin(), entries.end(), index,
            [](const Entry& entry, int wanted) { return entry.index < wanted; });
    }

    void Sort() const {
        if (sorted) return;
        std::stable_sort(entries.begin(), entries.end(),
                         [](const Entry& a, const Entry& b) { return a.index < b.index; });
        std::size_t kept = 0;
        for (std::size_t i = 1; i < entries.size(); ++i) {
            if (entries[i].index != entries[kept].index) ++kept;
            if (i != kept) entries[kept] = std::move(entries[i]);
        }
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(kept) + 1, entries.end());
        sorted = true;
    }

    Entry single{};
    mutable std::vector<Entry> entries;  // in place of the single one; put in order by readers
    bool hasSingle = false;
    mutable bool sorted = true;
};
