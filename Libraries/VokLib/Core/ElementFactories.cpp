#include "Core/ElementFactories.h"

#include <VokLib/VokAimConstraint.h>
#include <VokLib/VokAnim.h>
#include <VokLib/VokAnimChannel.h>
#include <VokLib/VokAnimClip.h>
#include <VokLib/VokAnimDiscontinuities.h>
#include <VokLib/VokBlend.h>
#include <VokLib/VokBlendTarget.h>
#include <VokLib/VokBlendshape.h>
#include <VokLib/VokBlendshapeController.h>
#include <VokLib/VokCamera.h>
#include <VokLib/VokCgShader.h>
#include <VokLib/VokCluster.h>
#include <VokLib/VokDeformer.h>
#include <VokLib/VokExpression.h>
#include <VokLib/VokFactory.h>
#include <VokLib/VokInstance.h>
#include <VokLib/VokJoint.h>
#include <VokLib/VokLight.h>
#include <VokLib/VokLocator.h>
#include <VokLib/VokLodGroup.h>
#include <VokLib/VokMaterial.h>
#include <VokLib/VokMesh.h>
#include <VokLib/VokMotionPath.h>
#include <VokLib/VokMultiBlendTarget.h>
#include <VokLib/VokNode.h>
#include <VokLib/VokNurbsCurve.h>
#include <VokLib/VokNurbsSurface.h>
#include <VokLib/VokObjSet.h>
#include <VokLib/VokOrientationConstraint.h>
#include <VokLib/VokParentConstraint.h>
#include <VokLib/VokPmDataQEL.h>
#include <VokLib/VokPose.h>
#include <VokLib/VokPrimitiveShape.h>
#include <VokLib/VokQeliLocator.h>
#include <VokLib/VokReference.h>
#include <VokLib/VokRigidBody.h>
#include <VokLib/VokScaleConstraint.h>
#include <VokLib/VokScene.h>
#include <VokLib/VokShader.h>
#include <VokLib/VokSkin.h>
#include <VokLib/VokSpringConstraint.h>
#include <VokLib/VokTexture.h>
#include <VokLib/VokTranslationConstraint.h>

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
