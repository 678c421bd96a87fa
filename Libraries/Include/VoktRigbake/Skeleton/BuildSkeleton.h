#pragma once

#include <VoktRigbake/Skeleton/SkeletonData.h>

#include <cstddef>
#include <memory>
#include <vector>

class VokWorld;
class VoktObjFilter;

/// Joint names, without their namespaces, may be this long.
inline constexpr std::size_t kMaxJointNameLength = 260;

/// Rows of the level of detail table: the sets of the world times the roots. Far above what a scene
/// needs; keeps a small document from asking for a huge file.
inline constexpr std::size_t kMaxLodRows = 65536;

/// Numbers the joints under `roots` (joints of `world`, none beneath another), gives each its
/// local transform, from the bind pose where that has it, reads the sets named skelLodSet, and
/// signs the result. With `verbose` the order is printed to standard output. Joints that `filter`
/// refuses are left out; it may be null.
///
/// Null when there are no roots. Throws a VokException for a scene whose joints make no skeleton,
/// and what the hash registry throws.
[[nodiscard]] std::unique_ptr<SkeletonData> BuildSkeleton(const VokWorld& world,
                                                          const std::vector<VokJoint*>& roots,
                                                          bool verbose,
                                                          const VoktObjFilter* filter);
