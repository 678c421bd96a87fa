#include "Skeleton/JointOrder.h"

#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VoktFramework/Stages/VoktObjFilter.h>

#include <algorithm>

namespace {

void FindJointsBelow(VokJoint* root, const VoktObjFilter* filter, const LodSets& lodSets,
                     std::vector<FoundJoint>& joints) {
    VokItHierarchy it(root, VokItHierarchy::Kind::DepthFirst, VokJoint::TypeId());
    while (it.Next() != nullptr) {
        auto* joint = static_cast<VokJoint*>(it.Current());
        if (filter != nullptr && !filter->Accepts(*joint)) continue;
        const auto* parent = ExactCast<VokJoint>(joint->GetParent());
        if (parent == nullptr) ThrowVokException("Joint parented to non-joint", joint);
        joints.push_back({joint, parent, it.GetDepth(), lodSets.FindLevel(joint), -1});
    }
}

}  // namespace

std::vector<FoundJoint> FindJoints(const std::vector<VokJoint*>& roots, const VoktObjFilter* filter,
                                   const LodSets& lodSets) {
    std::vector<FoundJoint> joints;
    for (VokJoint* root : roots) {
        joints.push_back({root, nullptr, 0, 0, -1});
        FindJointsBelow(root, filter, lodSets, joints);
    }
    return joints;
}

void NumberJoints(std::vector<FoundJoint>& joints) {
    std::vector<FoundJoint*> ordered;
    ordered.reserve(joints.size());
    for (FoundJoint& found : joints) {
        // Levels count from 0: a joint below that would never get a number.
        if (found.lodLevel < 0) ThrowVokException("error defining joint order");
        ordered.push_back(&found);
    }
    std::stable_sort(ordered.begin(), ordered.end(), [](const FoundJoint* a, const FoundJoint* b) {
        return a->lodLevel < b->lodLevel;
    });
    std::int32_t next = 0;
    for (FoundJoint* found : ordered) found->index = next++;
}
