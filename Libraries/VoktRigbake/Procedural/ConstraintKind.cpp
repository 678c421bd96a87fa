#include "Procedural/ConstraintKind.h"

#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokParentConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>

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
