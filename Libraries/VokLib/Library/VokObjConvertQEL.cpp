#include "Library/VokObjConvertQEL.h"

#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace {

/// Shorter vectors count as zero.
constexpr float kNegligible = 1e-6f;

float Length(float x, float y, float z) {
    return std::sqrt(x * x + y * y + z * z);
}
float Length(const VokVector4& v) {
    return Length(v.x, v.y, v.z);
}

/// True when an animation of `object` has a channel for `property`, whole or along one axis.
bool IsAnimated(const VokObj& object, std::string_view property) {
    bool animated = false;
    ForEach<VokAnim>(object.GetWorld(), [&](VokAnim& anim) {
        if (anim.target.FindTarget() != &object) return;
        for (std::size_t i = 0; i < anim.GetChildCount(); ++i) {
            const VokAnimChannel* channel = ExactCast<VokAnimChannel>(anim.GetChild(i));
            if (channel == nullptr) continue;
            const char* text = channel->attributes.Find("channel");
            std::string_view name = text != nullptr ? text : "";
            if (!name.starts_with(property)) continue;
            name.remove_prefix(property.size());
            animated |= name.empty() || name == "X" || name == "Y" || name == "Z";
        }
    });
    return animated;
}

/// A joint has neither pivots nor shear: pivots go into the translation as long as nothing animated
/// turns about them.
void CopyNodeToJoint(VokObj& target, VokObj& source) {
    if (!target.IsExactly(VokJoint::TypeId())) ThrowVokException("Target is not a joint.", &source);
    if (!source.IsA(VokNode::TypeId())) ThrowVokException("Source is not a node.", &source);
    auto& joint = static_cast<VokJoint&>(target);
    const auto& node = static_cast<const VokNode&>(source);

    if (Length(node.scalePivot) > kNegligible && IsAnimated(node, "scale"))
        ThrowVokException(
            "Failed to convert node to joint. Scale-pivot is not zero and scale is animated.",
            &source);
    if (Length(node.rotatePivot) > kNegligible && IsAnimated(node, "rotate"))
        ThrowVokException(
            "Failed to convert node to joint. Rotate-pivot is not zero and rotation is animated.",
            &source);
    if (Length(node.shear.x, node.shear.y, node.shear.z) > kNegligible)
        ThrowVokException("Failed to convert node to joint. Shear is non-zero.", &source);

    const VokMatrix local = node.GetLocalMatrix();
    joint.translate = {local[3][0], local[3][1], local[3][2], local[3][3]};
    joint.rotation = node.rotation;
    joint.rotationAxis = node.rotationAxis;
    joint.scale = node.scale;
    joint.parentEffect = ParentEffect::Normal;
}

}  // namespace

VokObjConvertQEL::VokObjConvertQEL() {
    RegisterDataCopier(VokJoint::TypeId(), VokNode::TypeId(), CopyNodeToJoint);
}
