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

template <class Type>
std::vector<ElementVocabulary::Child> ListChildren() {
    std::vector<ElementVocabulary::Child> children;
    for (const VokChildElement<Type>& row : Type::ChildElements())
        children.push_back({row.name, row.within});
    return children;
}

struct Row {
    std::string_view element;
    VokFactory::Function factory;
    std::vector<ElementVocabulary::Child> (*children)();
};

template <class Type>
constexpr Row Of(std::string_view element) {
    return {element, Make<Type>, ListChildren<Type>};
}

constexpr Row kRows[] = {
    Of<VokAimConstraint>("aimConstraint"),
    Of<VokAnim>("anim"),
    Of<VokAnimChannel>("animChannel"),
    Of<VokAnimClip>("animclip"),
    Of<VokAnimDiscontinuities>("animDiscontinuities"),
    Of<VokQeliLocator>("qelilocator"),
    Of<VokBlend>("blend"),
    Of<VokBlendshape>("blendshape"),
    Of<VokBlendshapeController>("blendshapeController"),
    Of<VokBlendTarget>("blendtarget"),
    Of<VokCamera>("camera"),
    Of<VokCgShader>("cgshader"),
    Of<VokCluster>("cluster"),
    Of<VokDeformer>("deformer"),
    Of<VokExpression>("expression"),
    Of<VokJoint>("joint"),
    Of<VokInstance>("instance"),
    Of<VokLight>("light"),
    Of<VokLocator>("locator"),
    Of<VokLodGroup>("lodgroup"),
    Of<VokMaterial>("material"),
    Of<VokMesh>("mesh"),
    Of<VokMotionPath>("motionPath"),
    Of<VokMultiBlendTarget>("multiBlendTarget"),
    Of<VokNode>("node"),
    Of<VokNurbsCurve>("nurbsCurve"),
    Of<VokNurbsSurface>("nurbs"),
    Of<VokObjSet>("objset"),
    Of<VokOrientationConstraint>("orientationConstraint"),
    Of<VokParentConstraint>("parentConstraint"),
    Of<VokPmDataQEL>("pmdataQEL"),
    Of<VokPrimitiveShape>("primitive"),
    Of<VokPose>("pose"),
    Of<VokReference>("reference"),
    Of<VokRigidBody>("rigidBody"),
    Of<VokScaleConstraint>("scaleConstraint"),
    Of<VokScene>("scene"),
    Of<VokSkin>("skin"),
    Of<VokShader>("shader"),
    Of<VokSpringConstraint>("springConstraint"),
    Of<VokTexture>("texture"),
    Of<VokTranslationConstraint>("translationConstraint"),
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

std::vector<ElementVocabulary> DescribeElements() {
    std::vector<ElementVocabulary> elements;
    for (const Row& row : kRows) elements.push_back({row.element, row.children()});
    return elements;
}
