#include "Procedural/AimUpObject.h"

#include <VokLib/Objects/Constraints/VokAimConstraint.h>

bool WantsUpObject(const VokAimConstraint& constraint) {
    return constraint.upMethod == AimUpMethod::ObjectTranslation ||
           constraint.upMethod == AimUpMethod::ObjectRotation;
}

VokObj* FindUpObject(const VokAimConstraint& constraint) {
    return constraint.upTarget.has_value() ? constraint.upTarget->FindTarget() : nullptr;
}
