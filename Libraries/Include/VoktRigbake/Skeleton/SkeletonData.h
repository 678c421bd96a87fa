#pragma once

#include <VokLib/Base/VokVector.h>
#include <VoktRigbake/Skeleton/SkeletonIndex.h>

#include <cstdint>
#include <memory>
#include <vector>

class VokJoint;

/// One joint of a flat skeleton, with its local transform. Indices are places in
/// SkeletonData::joints; -1 is none.
struct SkeletonJoint {
    const VokJoint* joint = nullptr;  ///< the scene's, not owned
    VokQuaternion rotation;           ///< joint orient, own rotation and rotation axis in one
    VokVector4 translation;  ///< in the scene's unit; the fourth element is 0, as that of the scale
    VokVector4 scale;
    std::uint32_t nameHash = 0;  ///< of the lower-cased name without namespaces
    std::int32_t index = -1;
    std::int32_t parent = -1;
    std::int32_t nextSibling = -1;
    std::int32_t firstChild = -1;
};

/// A skeleton as the file numbers it: a joint stands behind its parent, and the joints of finer
/// levels of detail stand last, so that a table can be cut at its tail. Points into the scene and
/// must not outlive it.
struct SkeletonData {
    std::uint32_t signature = 0;
    std::vector<std::unique_ptr<SkeletonJoint>> joints;
    SkeletonIndex index;  ///< of the joints
    std::vector<VokJoint*> roots;
    /// How many members each level of detail has, by ascending level; a set counts once for each
    /// root.
    std::vector<std::uint32_t> lodCounts;
};

/// A number for names and shape of a skeleton, whatever its pose.
std::uint32_t ComputeSkeletonSignature(const SkeletonData& skeleton);
