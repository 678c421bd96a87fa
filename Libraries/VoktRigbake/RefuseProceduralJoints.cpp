#include "RefuseProceduralJoints.h"

#include <QelTools/Exception.h>
#include <VokLib/VokAimConstraint.h>
#include <VokLib/VokAnim.h>
#include <VokLib/VokAnimChannel.h>
#include <VokLib/VokCast.h>
#include <VokLib/VokItHierarchy.h>
#include <VokLib/VokJoint.h>
#include <VokLib/VokOrientationConstraint.h>
#include <VokLib/VokParentConstraint.h>
#include <VokLib/VokScaleConstraint.h>
#include <VokLib/VokTranslationConstraint.h>
#include <VokLib/VokWorld.h>
#include <VoktRigbake/VoktRigbake.h>

namespace {

bool IsDrivenKey(const VokObj& object) {
    const auto* channel = ExactCast<VokAnimChannel>(&object);
    return channel != nullptr && channel->IsDrivenKey() &&
           ExactCast<VokAnim>(object.GetParent()) != nullptr;
}

bool IsConstraintOnJoint(const VokObj& object) {
    if (!object.IsExactly(VokTranslationConstraint::TypeId()) &&
        !object.IsExactly(VokOrientationConstraint::TypeId()) &&
        !object.IsExactly(VokAimConstraint::TypeId()) &&
        !object.IsExactly(VokParentConstraint::TypeId()) &&
        !object.IsExactly(VokScaleConstraint::TypeId()))
        return false;
    const auto& constraint = static_cast<const VokConstraint&>(object);
    return ExactCast<VokJoint>(constraint.constrained.FindTarget()) != nullptr;
}

}  // namespace

void RefuseProceduralJoints(const VoktRigbake& component, VokWorld& world) {
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        const VokObj& object = *it.Current();
        if (component.OutputsDrivenKeys() && IsDrivenKey(object))
            QelTools::Common::ThrowException(
                "Driven keys are not supported by this build yet; -outputDrivenKeys false leaves "
                "them out.");
        if (component.OutputsJointConstraints() && IsConstraintOnJoint(object))
            QelTools::Common::ThrowException(
                "Joint constraints are not supported by this build yet; -outputJointConstraints "
                "false leaves them out.");
    }
}
