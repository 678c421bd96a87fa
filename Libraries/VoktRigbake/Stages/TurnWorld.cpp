#include "Stages/TurnWorld.h"

#include <AnimUtil/Animation/VokAnimUtil.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Geometry/VokSkin.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Sets/VokPose.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <memory>
#include <unordered_set>

namespace {

constexpr const char* kTurnedNodeName = "__VokChangeUpAxis__magic_node";
constexpr float kQuarterTurn = 1.5707964f;

constexpr int kYUp = 0;

using Joints = std::unordered_set<const VokObj*>;

/// The turn as the joints of the scene see it. It has gone through a quaternion, as every rotation
/// of a node does, and keeps that rounding.
struct Turn {
    explicit Turn(const VokNode& node) : matrix(node.GetLocalMatrix()) {
        for (int row = 0; row < 4; ++row) matrix[row][3] = row == 3 ? 1.0f : 0.0f;
        quaternion = VokMath::ToQuaternion(matrix);
    }

    void Apply(VokVector4& translate) const {
        const VokMatrix& m = matrix;
        const auto [x, y, z, w] = translate;
        translate = {x * m[0][0] + y * m[1][0] + z * m[2][0],
                     x * m[0][1] + y * m[1][1] + z * m[2][1],
                     x * m[0][2] + y * m[1][2] + z * m[2][2], w};
    }

    void Apply(EulerRotation& rotation) const {
        const VokQuaternion turned =
            VokMath::Multiply(quaternion, VokMath::EulerToQuaternion(rotation));
        rotation = VokMath::QuaternionToEuler(turned, rotation.order);
    }

    VokMatrix matrix;
    VokQuaternion quaternion;
};

/// Puts one node between the hierarchy and everything in it.
VokNode& InsertTurnedNode(VokWorld& world, float angle) {
    auto node = std::make_unique<VokNode>();
    node->SetName(kTurnedNodeName);
    node->rotation = {angle, 0, 0, RotationOrder::xyz};
    VokScene& hierarchy = *world.GetHierarchy();
    node->AdoptChildren(hierarchy);
    hierarchy.AddChild(node.get());
    return *node.release();
}

void TurnSkins(VokWorld& world, const Turn& turn) {
    const VokMatrix inverse = VokMath::Inverse(turn.matrix);
    ForEach<VokSkin>(&world, [&inverse](VokSkin& skin) {
        for (std::size_t i = 0; i < skin.GetInfluenceCount(); ++i) {
            auto& bindInverse = skin.GetInfluence(i).bindInverse;
            if (bindInverse) bindInverse = VokMath::Multiply(inverse, *bindInverse);
        }
    });
}

/// What stands below a joint that is turned turns with it.
Joints TurnTopmostJoints(VokWorld& world, const Turn& turn) {
    Joints turned;
    VokItHierarchy it(&world, VokItHierarchy::Kind::DepthFirst, VokJoint::TypeId());
    while (!it.AtEnd()) {
        auto& joint = static_cast<VokJoint&>(*it.Current());
        turn.Apply(joint.translate);
        turn.Apply(joint.rotation);
        turned.insert(&joint);
        it.SkipChildren();
        it.Next();
    }
    return turned;
}

void TurnAnimation(VokWorld& world, const Joints& turned) {
    VokAnimUtil::ResampledTotal total;
    ForEach<VokAnim>(&world, [&](VokAnim& anim) {
        if (turned.contains(anim.target.FindTarget())) VokAnimUtil::Transform(anim, total);
    });
}

void TurnPoses(VokWorld& world, const Joints& turned, const Turn& turn) {
    ForEach<VokPose>(&world, [&](VokPose& pose) {
        for (std::size_t i = 0; i < pose.GetElementCount(); ++i) {
            VokPose::PoseElement& element = pose.GetElement(i);
            if (!turned.contains(element.target.FindTarget())) continue;
            turn.Apply(element.translate);
            turn.Apply(element.rotation);
        }
    });
}

}  // namespace

void TurnWorld(VokWorld& world, int upAxis, bool changeAnimation) {
    if (world.GetUpAxis() == upAxis) return;
    const VokNode& node = InsertTurnedNode(world, upAxis == kYUp ? -kQuarterTurn : kQuarterTurn);
    if (changeAnimation) {
        const Turn turn(node);
        TurnSkins(world, turn);
        const Joints turned = TurnTopmostJoints(world, turn);
        // From y to z keys stay as they are: there is no such conversion.
        if (upAxis == kYUp) TurnAnimation(world, turned);
        TurnPoses(world, turned, turn);
    }
    world.SetUpAxis(upAxis);
}
