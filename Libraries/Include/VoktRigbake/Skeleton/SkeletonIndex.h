#pragma once

#include <cstdint>
#include <unordered_map>

class VokObj;
struct SkeletonData;

/// Finds the place of a scene object in a skeleton. Refers to the skeleton's joints and must not
/// outlive them.
class SkeletonIndex {
  public:
    explicit SkeletonIndex(const SkeletonData& skeleton);

    /// The object's joint index; -1 for null, for what is no joint and for a joint that the
    /// skeleton does not hold.
    std::int32_t Find(const VokObj* object) const;

  private:
    std::unordered_map<const VokObj*, std::int32_t> indices;
};
