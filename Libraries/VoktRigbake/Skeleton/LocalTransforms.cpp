#include "Skeleton/LocalTransforms.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Sets/VokPose.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

#include <unordered_map>

namespace {

using JointLookup = std::unordered_map<const VokObj*, SkeletonJoint*>;

JointLookup MakeLookup(const SkeletonData& skeleton) {
    JointLookup lookup;
    for (const auto& joint : skeleton.joints) lookup.emplace(joint->joint, joint.get());
    return lookup;
}

bool Touches(const VokPose& pose, const JointLookup& joints) {
    for (std::size_t i = 0; i < pose.GetElementCount(); ++i)
        if (joints.contains(pose.GetElement(i).target.FindTarget())) return true;
    return false;
}

const VokPose* FindBindPose(const VokWorld& world, const JointLookup& joints) {
    for (std::size_t i = 0; i < world.GetChildCount(); ++i) {
        const auto* pose = ExactCast<VokPose>(world.GetChild(i));
        if (pose != nullptr && pose->bindPose && Touches(*pose, joints)) return pose;
    }
    return nullptr;
}

void SetTransform(SkeletonJoint& joint, const EulerRotation& rotation, const VokVector4& translate,
                  const VokVector3& scale) {
    joint.rotation = joint.joint->ComposeRotation(rotation);
    joint.translation = {translate.x, translate.y, translate.z, 0};
    joint.scale = {scale.x, scale.y, scale.z, 0};
}

}  // namespace

void FillLocalTransforms(SkeletonData& skeleton) {
    for (const auto& entry : skeleton.joints) {
        const VokJoint& joint = *entry->joint;
        SetTransform(*entry, joint.rotation, joint.translate, joint.scale);
    }
    if (skeleton.joints.empty()) return;
    const JointLookup joints = MakeLookup(skeleton);
    const VokPose* pose = FindBindPose(*skeleton.joints.front()->joint->GetWorld(), joints);
    if (pose == nullptr) return;
    // From the last to the first, so that of two elements for one joint the first one stands.
    for (std::size_t i = pose->GetElementCount(); i-- > 0;) {
        const VokPose::PoseElement& element = pose->GetElement(i);
        const auto found = joints.find(element.target.FindTarget());
        if (found != joints.end())
            SetTransform(*found->second, element.rotation, element.translate, element.scale);
    }
}
