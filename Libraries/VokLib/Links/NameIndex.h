#pragma once

#include <string_view>
#include <vector>

class VokObj;

/// The children of one object by name; of several with one name the first. A hash table with open
/// addressing that holds nothing but pointers. Stands for a tree that does not change.
class NameIndex {
  public:
    explicit NameIndex(const VokObj& parent);

    /// The first child of exactly this name, or null.
    VokObj* Find(std::string_view name) const;

  private:
    std::size_t FindSlot(std::string_view name) const;

    std::vector<VokObj*> slots;  // a power of two, at most half full
};
