#include <VoktRigbake/Procedural/JointConstraints.h>

#include "Procedural/AimUpObject.h"
#include "Procedural/ConstraintKind.h"

#include <QelTools/Exception.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokConstraint.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokCast.h>

#include <string>

using QelTools::Common::ThrowException;

namespace {

std::string NameOf(const VokObj* object) {
    return object == nullptr ? "<null>" : object->GetName();
}

bool IsJoint(const VokObj* object) {
    return ExactCast<VokJoint>(object) != nullptr;
}

/// The up object that takes part in the evaluation, or null.
const VokObj* CheckUpObject(const VokConstraint& constraint, const SkeletonIndex& skeleton) {
    const auto* aim = ExactCast<VokAimConstraint>(&constraint);
    if (aim == nullptr || !WantsUpObject(*aim)) return nullptr;
    const VokObj* object = FindUpObject(*aim);
    if (skeleton.Find(object) == -1)
        ThrowException("constraint " + constraint.GetName() + " up object (" + NameOf(object) +
                       ") not in skeleton");
    return object;
}

std::int32_t FindJoint(const VokObj* object, const SkeletonIndex& skeleton) {
    const std::int32_t index = skeleton.Find(object);
    if (index == -1)
        ThrowException("Constrained object " + NameOf(object) + " is not a joint in the skeleton");
    return index;
}

void CheckTarget(const VokObj* target, const VokObj* constrained, const std::string& subject) {
    // The blanks of these texts, doubled and trailing ones too, are part of what scripts look for.
    if (!IsJoint(target))
        ThrowException(subject + ") " + " has an invalid target (" + NameOf(target) + ") ");
    if (target == constrained) ThrowException(subject + ") references itself ");
}

}  // namespace

void JointConstraints::Validate(const VokConstraint* constraint,
                                const SkeletonIndex& skeleton) const {
    if (constraint == nullptr) QelTools::Common::ThrowInternalError();
    const std::string name = "constraint " + constraint->GetName();
    const VokObj* constrained = constraint->constrained.FindTarget();
    if (!IsJoint(constrained))
        ThrowException(name + " has an invalid constrained object (" + NameOf(constrained) + ")");
    const std::string subject = name + " (" + constrained->GetName();

    for (std::size_t i = 0; i < constraint->GetTargetCount(); ++i)
        CheckTarget(constraint->GetTarget(i).object.FindTarget(), constrained, subject);
    for (std::size_t i = 0; i < constraint->GetTargetCount(); ++i) {
        const VokObj* target = constraint->GetTarget(i).object.FindTarget();
        if (constrainedObjects.contains(target))
            ThrowException(subject + ") " + " has a target (" + NameOf(target) +
                           ") that is constrained by another constraint");
    }
    if (targetObjects.contains(constrained))
        ThrowException(name + " has a constrained object (" + constrained->GetName() +
                       ") that is used as a target by another constraint");
    CheckUpObject(*constraint, skeleton);
}

void JointConstraints::AddConstraint(const VokConstraint* constraint,
                                     const SkeletonIndex& skeleton) {
    Validate(constraint, skeleton);
    const VokObj* constrained = constraint->constrained.FindTarget();
    constrainedObjects.insert(constrained);
    constrainedJoints.insert(FindJoint(constrained, skeleton));

    const std::size_t count = constraint->GetTargetCount();
    for (std::size_t i = 0; i < count; ++i) {
        const VokObj* target = constraint->GetTarget(i).object.FindTarget();
        targetObjects.insert(target);
        targetJoints.insert(FindJoint(target, skeleton));
    }
    if (const VokObj* upObject = CheckUpObject(*constraint, skeleton))
        targetJoints.insert(skeleton.Find(upObject));

    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t first = i == 0 ? ConstraintItem::kFirstTarget : 0;
        const std::uint32_t last = i + 1 == count ? ConstraintItem::kLastTarget : 0;
        ItemsFor(*constraint).push_back({first | last, static_cast<std::uint32_t>(i), constraint});
    }
}

std::vector<ConstraintItem>& JointConstraints::ItemsFor(const VokConstraint& constraint) {
    const std::optional<ConstraintKind> kind = FindConstraintKind(constraint);
    if (!kind.has_value()) ThrowException("Unsupported constraint " + constraint.GetName());
    switch (*kind) {
        case ConstraintKind::Translation:
            return translationItems;
        case ConstraintKind::Orientation:
            return orientationItems;
        case ConstraintKind::Aim:
            return aimItems;
        case ConstraintKind::Parent:
            return parentItems;
        default:
            return scaleItems;
    }
}

bool JointConstraints::IsEmpty() const {
    return translationItems.empty() && orientationItems.empty() && aimItems.empty() &&
           parentItems.empty() && scaleItems.empty();
}
