#pragma once

#include "Procedural/DocumentOrder.h"

#include <cstdint>
#include <vector>

/// `before` must be up to date before `after` is made.
struct Dependency {
    const VokObj* before = nullptr;
    const VokObj* after = nullptr;
    std::uint32_t beforeNumber = 0;  ///< their places in the document
    std::uint32_t afterNumber = 0;
};

/// A multimap of relations between the objects of one world.
class Dependencies {
  public:
    explicit Dependencies(const DocumentOrder& objectOrder) : order(objectOrder) {}

    void Add(const VokObj* before, const VokObj* after) {
        entries.push_back({before, after, order.NumberOf(before), order.NumberOf(after)});
    }

    const DocumentOrder& GetOrder() const { return order; }
    /// By the first object's place in the document, those of one object in the order in which they
    /// were added.
    std::vector<Dependency> GetSorted() const;

  private:
    const DocumentOrder& order;
    std::vector<Dependency> entries;
};
