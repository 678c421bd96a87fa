#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class VokJoint;
class VokWorld;
class VokObj;
class VokObjSet;

/// The level of detail sets of a scene: the sets of type "set" directly under the world whose names
/// begin with skelLodSet and go on with the number of the level.
class LodSets {
  public:
    /// Reads the sets of the roots' world. Only joints at or beneath a root count as members.
    /// Throws a VokException on the first set with a malformed name, a member without an object or
    /// a member that is no joint.
    LodSets(const VokWorld& world, const std::vector<VokJoint*>& roots);

    /// The level of the first set that holds `joint`, or 0.
    std::int32_t FindLevel(const VokJoint* joint) const;

    /// How many members each level has, by ascending level, each set's level standing once for each
    /// root. Of two sets with one level the later one is counted.
    std::vector<std::uint32_t> CountMembers() const;

  private:
    struct Entry {
        std::int32_t level = 0;
        std::uint32_t memberCount = 0;
    };
    void Read(const VokObjSet& set, const std::vector<VokJoint*>& roots);
    bool IsUnderRoots(const VokObj* joint, const std::vector<VokJoint*>& roots);

    std::size_t rootCount;
    std::vector<Entry> entries;  // in document order
    std::unordered_map<const VokObj*, std::int32_t> levels;
    std::unordered_set<const VokObj*> jointsUnderRoots;
};
