#include <VoktRigbake/Procedural/JointConstraints.h>

#include "File/FileTables.h"
#include "Procedural/AimUpObject.h"

#include <QelTools/Exception.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokParentConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokCast.h>

#include <array>
#include <unordered_map>

using QelTools::Common::ThrowException;

namespace {

constexpr std::uint16_t kNoSlot = 0xFFFF;

/// What says in the file where the up direction of an aim constraint comes from.
enum class WorldUpCode : std::uint16_t { Vector = 0, ObjectTranslation = 1, ObjectRotation = 2 };

void AppendVector(Biff::CBlock& block, const VokVector4& vector) {
    block.AppendFloats(std::array{vector.x, vector.y, vector.z, vector.w});
}

std::uint16_t Low16(std::size_t count) {
    return static_cast<std::uint16_t>(count);
}

/// Appends one block.
class ConstraintWriter {
  public:
    ConstraintWriter(const JointConstraints& content, const SkeletonIndex& index,
                     Biff::CBlock& target)
        : constraints(content), skeleton(index), block(target) {}

    void Write() {
        AppendHeader();
        AppendJointTable();
        // A list without items has its label, too: its offset points at the next part.
        BeginTable(block, orientationLabel);
        for (const ConstraintItem& item : constraints.orientationItems) AppendOrientation(item);
        BeginTable(block, translationLabel);
        for (const ConstraintItem& item : constraints.translationItems) AppendTranslation(item);
        BeginTable(block, scaleLabel);
        for (const ConstraintItem& item : constraints.scaleItems) AppendScale(item);
        BeginTable(block, aimLabel);
        for (const ConstraintItem& item : constraints.aimItems) AppendAim(item);
        BeginTable(block, parentLabel);
        for (const ConstraintItem& item : constraints.parentItems) AppendParent(item);
        BeginTable(block, endLabel);
    }

  private:
    void AppendHeader() {
        block.AppendMagic("JC01");
        AppendRelativeOffset(block, endLabel);
        AppendRelativeOffset(block, jointLabel);
        block.AppendU16(Low16(constraints.constrainedJoints.size()));
        block.AppendU16(Low16(constraints.targetJoints.size()));
        for (const std::uint32_t label :
             {orientationLabel, translationLabel, scaleLabel, aimLabel, parentLabel})
            AppendRelativeOffset(block, label);
        block.AppendU16(Low16(constraints.orientationItems.size()));
        block.AppendU16(Low16(constraints.translationItems.size()));
        block.AppendU16(Low16(constraints.scaleItems.size()));
        block.AppendU16(Low16(constraints.aimItems.size()));
        block.AppendU16(Low16(constraints.parentItems.size()));
    }

    void AppendJointTable() {
        BeginTable(block, jointLabel);
        std::uint32_t slot = 0;
        // A joint that stands in both sets has two entries; the first is the one that items name.
        for (const auto* joints : {&constraints.constrainedJoints, &constraints.targetJoints})
            for (const std::int32_t joint : *joints) {
                block.AppendU16(static_cast<std::uint16_t>(joint));
                slots.try_emplace(joint, slot++);
            }
    }

    std::uint32_t FindSlot(std::int32_t joint) const {
        const auto found = slots.find(joint);
        if (found == slots.end()) QelTools::Common::ThrowInternalError();
        return found->second;
    }

    void AppendItemHeader(const ConstraintItem& item) {
        const ConstraintTarget& target = item.constraint->GetTarget(item.targetIndex);
        block.AppendAlign(kTableAlignment);
        block.AppendU32(item.flags);
        block.AppendU32(FindSlot(skeleton.Find(item.constraint->constrained.FindTarget())));
        block.AppendU32(FindSlot(skeleton.Find(target.object.FindTarget())));
        block.AppendFloat(target.weight);
    }

    void AppendOrientation(const ConstraintItem& item) {
        AppendItemHeader(item);
        const auto& constraint = static_cast<const VokOrientationConstraint&>(*item.constraint);
        if (constraint.orientInterpolation != OrientInterpolation::Average)
            ThrowException("unsupported orientation constraint interpolation encountered");
    }

    void AppendTranslation(const ConstraintItem& item) {
        AppendItemHeader(item);
        AppendVector(block, static_cast<const VokTranslationConstraint&>(*item.constraint).offset);
    }

    void AppendScale(const ConstraintItem& item) {
        AppendItemHeader(item);
        const VokVector3& offset = static_cast<const VokScaleConstraint&>(*item.constraint).offset;
        AppendVector(block, {offset.x, offset.y, offset.z, 0});
    }

    void AppendAim(const ConstraintItem& item) {
        AppendItemHeader(item);
        const auto& constraint = static_cast<const VokAimConstraint&>(*item.constraint);
        AppendVector(block, constraint.aim);
        AppendVector(block, constraint.up);
        AppendVector(block, constraint.globalUp);
        const WorldUpCode code = GetWorldUpCode(constraint);
        block.AppendU16(static_cast<std::uint16_t>(code));
        block.AppendU16(code == WorldUpCode::Vector ? kNoSlot : FindUpSlot(constraint));
        for (int i = 0; i < 12; ++i) block.AppendU8(0);
    }

    static WorldUpCode GetWorldUpCode(const VokAimConstraint& constraint) {
        switch (constraint.upMethod) {
            case AimUpMethod::GlobalVector:
                return WorldUpCode::Vector;
            case AimUpMethod::ObjectTranslation:
                return WorldUpCode::ObjectTranslation;
            case AimUpMethod::ObjectRotation:
                return WorldUpCode::ObjectRotation;
            default:
                ThrowException("constraint " + constraint.GetName() +
                               " has an invalid WorldUpMethod");
        }
    }

    std::uint16_t FindUpSlot(const VokAimConstraint& constraint) const {
        const std::int32_t joint = skeleton.Find(FindUpObject(constraint));
        if (joint == -1)
            ThrowException("constraint " + constraint.GetName() + " up object not in skeleton");
        return static_cast<std::uint16_t>(FindSlot(joint));
    }

    void AppendParent(const ConstraintItem& item) {
        AppendItemHeader(item);
        const auto& constraint = static_cast<const VokParentConstraint&>(*item.constraint);
        const ParentTargetOffset& offset = constraint.GetTargetOffset(item.targetIndex);
        const auto* joint = ExactCast<VokJoint>(constraint.constrained.FindTarget());
        const VokQuaternion rotation =
            VokMath::Multiply(VokMath::EulerToQuaternion(joint->rotationAxis),
                              VokMath::EulerToQuaternion(offset.rotation));
        const VokVector3& translation = offset.translation;
        AppendVector(block, {translation.x, translation.y, translation.z, 1});
        block.AppendFloats(std::array{rotation.x, rotation.y, rotation.z, rotation.w});
    }

    const JointConstraints& constraints;
    const SkeletonIndex& skeleton;
    Biff::CBlock& block;
    std::unordered_map<std::int32_t, std::uint32_t> slots;  // by joint index
    const std::uint32_t endLabel = Biff::ReserveLabel();
    const std::uint32_t jointLabel = Biff::ReserveLabel();
    const std::uint32_t orientationLabel = Biff::ReserveLabel();
    const std::uint32_t translationLabel = Biff::ReserveLabel();
    const std::uint32_t scaleLabel = Biff::ReserveLabel();
    const std::uint32_t aimLabel = Biff::ReserveLabel();
    const std::uint32_t parentLabel = Biff::ReserveLabel();
};

}  // namespace

void JointConstraints::Write(Biff::CBlock& block, const SkeletonIndex& skeleton) const {
    ConstraintWriter(*this, skeleton, block).Write();
}
