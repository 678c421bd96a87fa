#pragma once

#include "Skeleton/LodSets.h"

#include <VokLib/Objects/Nodes/VokJoint.h>

#include <cstddef>
#include <cstdint>
#include <vector>

class VoktObjFilter;

/// A joint as the walk over the scene met it.
struct FoundJoint {
    VokJoint* joint = nullptr;
    const VokJoint* parent = nullptr;  ///< null for a root
    std::size_t depth = 0;             ///< below its root
    std::int32_t lodLevel = 0;
    std::int32_t index = -1;  ///< place in the skeleton's list
};

/// The joints of the subtrees in order of discovery: root by root, each in pre-order, without those
/// that `filter` (may be null) refuses. A root is always on level 0. Throws "Joint parented to
/// non-joint" on the first such joint.
std::vector<FoundJoint> FindJoints(const std::vector<VokJoint*>& roots, const VoktObjFilter* filter,
                                   const LodSets& lodSets);

/// Gives each joint its index: ascending by level, by order of discovery within a level. Throws
/// "error defining joint order" when a level is below 0.
void NumberJoints(std::vector<FoundJoint>& joints);
