#include "ConstraintKind.h"

#include <VokLib/VokAimConstraint.h>
#include <VokLib/VokOrientationConstraint.h>
#include <VokLib/VokParentConstraint.h>
#include <VokLib/VokScaleConstraint.h>
#include <VokLib/VokTranslationConstraint.h>

std::optional<ConstraintKind> FindConstraintKind(const VokObj& object) {
    switch (object.GetTypeId()) {
        case VokTranslationConstraint::TypeId():
            return ConstraintKind::Translation;
        case VokOrientationConstraint::TypeId():
            return ConstraintKind::Orientation;
        case VokAimConstraint::TypeId():
            return ConstraintKind::Aim;
        case VokParentConstraint::TypeId():
            return ConstraintKind::Parent;
        case VokScaleConstraint::TypeId():
            return ConstraintKind::Scale;
        default:
            return std::nullopt;
    }
}
