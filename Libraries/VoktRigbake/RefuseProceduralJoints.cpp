#include "RefuseProceduralJoints.h"

#include <QelTools/Exception.h>
#include <VokLib/VokAttributes.h>
#include <VokLib/VokCast.h>
#include <VokLib/VokItHierarchy.h>
#include <VokLib/VokJoint.h>
#include <VokLib/VokPath.h>
#include <VokLib/VokWorld.h>
#include <VoktRigbake/VoktRigbake.h>

#include <algorithm>
#include <array>

namespace {

constexpr VokTypeId kAnim = MakeTypeId("anim");
constexpr VokTypeId kAnimChannel = MakeTypeId("animChannel");
constexpr std::array kConstraints = {
    MakeTypeId("translationConstraint"), MakeTypeId("orientationConstraint"),
    MakeTypeId("aimConstraint"), MakeTypeId("parentConstraint"), MakeTypeId("scaleConstraint")};

bool IsDrivenKey(const VokObj& object) {
    if (!object.IsExactly(kAnimChannel) || !object.GetParent()->IsExactly(kAnim)) return false;
    VokAttributes attributes;
    object.WriteAttributes(attributes);
    return attributes.Has("inputObject");
}

bool IsConstraintOnJoint(const VokObj& object, VokWorld& world) {
    if (std::find(kConstraints.begin(), kConstraints.end(), object.GetTypeId()) ==
        kConstraints.end())
        return false;
    VokAttributes attributes;
    object.WriteAttributes(attributes);
    const VokPath constrained(attributes.GetString("constrain"));
    return ExactCast<VokJoint>(constrained.Resolve(&world)) != nullptr;
}

}  // namespace

void RefuseProceduralJoints(const VoktRigbake& component, VokWorld& world) {
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        const VokObj& object = *it.Current();
        if (component.OutputsDrivenKeys() && IsDrivenKey(object))
            QelTools::Common::ThrowException(
                "Driven keys are not supported by this build yet; -outputDrivenKeys false leaves "
                "them out.");
        if (component.OutputsJointConstraints() && IsConstraintOnJoint(object, world))
            QelTools::Common::ThrowException(
                "Joint constraints are not supported by this build yet; -outputJointConstraints "
                "false leaves them out.");
    }
}
