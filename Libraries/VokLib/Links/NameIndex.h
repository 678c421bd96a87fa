#pragma once

#include <QelTools/KeyedHash.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class VokObj;

/// The children of one object by name; of several with one name the first. A hash table with open
/// addressing whose tags, parts of the hashes, are searched alone, so that hardly a child is looked
/// at in vain. Stands for a tree that does not change.
class NameIndex {
  public:
    explicit NameIndex(const VokObj& parent);

    /// The first child of exactly this name, whose hash is `hash`, or null.
    VokObj* Find(std::string_view name, std::size_t hash) const {
        return children[FindSlot(name, hash)];
    }

    // For whoever knows a name some time before he looks for it.
    static std::size_t HashOf(std::string_view name) { return QelTools::Common::KeyedHash()(name); }
    /// Where the search for a name of this hash begins.
    void PrefetchSlot(std::size_t hash) const;
    /// The child that it ends at.
    void PrefetchChild(std::size_t hash) const;

  private:
    /// The first slot from `at` on that is empty or has this tag.
    std::size_t NextSlot(std::size_t at, std::uint16_t tag) const;
    /// The slot of this name, or the empty one for it.
    std::size_t FindSlot(std::string_view name, std::size_t hash) const;

    // A power of two of slots, at most half of them taken.
    std::vector<std::uint16_t> tags;  // 0 for an empty slot
    std::vector<VokObj*> children;
};
