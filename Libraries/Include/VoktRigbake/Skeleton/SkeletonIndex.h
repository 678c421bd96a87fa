#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>

class VokObj;

/// Finds the place of a scene object in a skeleton. Points into the scene and must not outlive it.
class SkeletonIndex {
  public:
    void Reserve(std::size_t count) { indices.reserve(count); }
    /// Notes that `joint`, which is new here, stands at `index`.
    void Add(const VokObj& joint, std::int32_t index) { indices.emplace(&joint, index); }

    /// The object's joint index; -1 for null, for what is no joint and for a joint that the
    /// skeleton does not hold.
    std::int32_t Find(const VokObj* object) const {
        const auto found = indices.find(object);
        return found == indices.end() ? -1 : found->second;
    }

  private:
    std::unordered_map<const VokObj*, std::int32_t> indices;  // for look-ups alone; never walked
};
