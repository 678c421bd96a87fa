#include "Skeleton/LocalTransforms.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Sets/VokPose.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/Skeleton/SkeletonData.h>

namespace {

bool Touches(const VokPose& pose, const SkeletonIndex& joints) {
    for (std::size_t i = 0; i < pose.GetElementCount(); ++i)
        if (joints.Find(pose.GetElement(i).target.FindTarget()) != -1) return true;
    return false;
}

const VokPose* FindBindPose(const VokWorld& world, const SkeletonIndex& joints) {
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

void FillLocalTransforms(const VokWorld& world, SkeletonData& skeleton) {
    for (const auto& entry : skeleton.joints) {
        const VokJoint& joint = *entry->joint;
        SetTransform(*entry, joint.rotation, joint.translate, joint.scale);
    }
    const VokPose* pose = FindBindPose(world, skeleton.index);
    if (pose == nullptr) return;
    // From the last to the first, so that of two elements for one joint the first one stands.
    for (std::size_t i = pose->GetElementCount(); i-- > 0;) {
        const VokPose::PoseElement& element = pose->GetElement(i);
        const std::int32_t index = skeleton.index.Find(element.target.FindTarget());
        if (index != -1)
            SetTransform(*skeleton.joints[static_cast<std::size_t>(index)], element.rotation,
                         element.translate, element.scale);
    }
}
