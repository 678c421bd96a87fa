#include "Library/ElementFactories.h"

#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Animation/VokAnimClip.h>
#include <VokLib/Objects/Animation/VokAnimDiscontinuities.h>
#include <VokLib/Objects/Animation/VokBlend.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokExpression.h>
#include <VokLib/Objects/Constraints/VokMotionPath.h>
#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokParentConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokSpringConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>
#include <VokLib/Objects/Geometry/VokBlendTarget.h>
#include <VokLib/Objects/Geometry/VokBlendshape.h>
#include <VokLib/Objects/Geometry/VokBlendshapeController.h>
#include <VokLib/Objects/Geometry/VokCluster.h>
#include <VokLib/Objects/Geometry/VokDeformer.h>
#include <VokLib/Objects/Geometry/VokMesh.h>
#include <VokLib/Objects/Geometry/VokMultiBlendTarget.h>
#include <VokLib/Objects/Geometry/VokNurbsCurve.h>
#include <VokLib/Objects/Geometry/VokNurbsSurface.h>
#include <VokLib/Objects/Geometry/VokPmDataQEL.h>
#include <VokLib/Objects/Geometry/VokSkin.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Nodes/VokLocator.h>
#include <VokLib/Objects/Nodes/VokLodGroup.h>
#include <VokLib/Objects/Nodes/VokQeliLocator.h>
#include <VokLib/Objects/Sets/VokObjSet.h>
#include <VokLib/Objects/Sets/VokPose.h>
#include <VokLib/Objects/Sets/VokPrimitiveShape.h>
#include <VokLib/Objects/Sets/VokRigidBody.h>
#include <VokLib/Objects/Shading/VokCamera.h>
#include <VokLib/Objects/Shading/VokCgShader.h>
#include <VokLib/Objects/Shading/VokLight.h>
#include <VokLib/Objects/Shading/VokMaterial.h>
#include <VokLib/Objects/Shading/VokShader.h>
#include <VokLib/Objects/Shading/VokTexture.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokReference.h>
#include <VokLib/Tree/VokScene.h>

#include <string_view>

namespace {

template <class Type>
VokObj* Make() {
    return new Type;
}

struct Row {
    std::string_view element;
    VokFactory::Function factory;
};

constexpr Row kRows[] = {
    {"aimConstraint", Make<VokAimConstraint>},
    {"anim", Make<VokAnim>},
    {"animChannel", Make<VokAnimChannel>},
    {"animclip", Make<VokAnimClip>},
    {"animDiscontinuities", Make<VokAnimDiscontinuities>},
    {"qelilocator", Make<VokQeliLocator>},
    {"blend", Make<VokBlend>},
    {"blendshape", Make<VokBlendshape>},
    {"blendshapeController", Make<VokBlendshapeController>},
    {"blendtarget", Make<VokBlendTarget>},
    {"camera", Make<VokCamera>},
    {"cgshader", Make<VokCgShader>},
    {"cluster", Make<VokCluster>},
    {"deformer", Make<VokDeformer>},
    {"expression", Make<VokExpression>},
    {"joint", Make<VokJoint>},
    {"instance", Make<VokInstance>},
    {"light", Make<VokLight>},
    {"locator", Make<VokLocator>},
    {"lodgroup", Make<VokLodGroup>},
    {"material", Make<VokMaterial>},
    {"mesh", Make<VokMesh>},
    {"motionPath", Make<VokMotionPath>},
    {"multiBlendTarget", Make<VokMultiBlendTarget>},
    {"node", Make<VokNode>},
    {"nurbsCurve", Make<VokNurbsCurve>},
    {"nurbs", Make<VokNurbsSurface>},
    {"objset", Make<VokObjSet>},
    {"orientationConstraint", Make<VokOrientationConstraint>},
    {"parentConstraint", Make<VokParentConstraint>},
    {"pmdataQEL", Make<VokPmDataQEL>},
    {"primitive", Make<VokPrimitiveShape>},
    {"pose", Make<VokPose>},
    {"reference", Make<VokReference>},
    {"rigidBody", Make<VokRigidBody>},
    {"scaleConstraint", Make<VokScaleConstraint>},
    {"scene", Make<VokScene>},
    {"skin", Make<VokSkin>},
    {"shader", Make<VokShader>},
    {"springConstraint", Make<VokSpringConstraint>},
    {"texture", Make<VokTexture>},
    {"translationConstraint", Make<VokTranslationConstraint>},
};

}  // namespace

ElementFactories::ElementFactories() {
    try {
        for (const Row& row : kRows) {
            VokFactory::RegisterFactory(row.element, row.factory);
            ++registered;
        }
    } catch (...) {
        Unregister();
        throw;
    }
}

ElementFactories::~ElementFactories() {
    Unregister();
}

void ElementFactories::Unregister() noexcept {
    while (registered > 0) VokFactory::UnregisterFactory(kRows[--registered].element);
}
