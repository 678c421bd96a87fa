#include <VokLib/Tree/VokNode.h>

#include <VokLib/Base/VokMath.h>
#include <VokLib/Document/VokFields.h>

using namespace VokFields;

namespace {

bool HasAngles(const EulerRotation& r) {
    return r.x != 0 || r.y != 0 || r.z != 0;
}

}  // namespace

std::span<const VokChildElement<VokNode>> VokNode::ChildElements() {
    static constexpr VokChildElement<VokNode> rows[] = {
        {.name = "translate",
         .data = ReadPosition<&VokNode::translate>,
         .write = WriteVector3UnlessDefault<&VokNode::translate, kZeros>},
        {.name = "rotEul",
         .start = ReadOrder<&VokNode::rotation>,
         .data = ReadAngles<&VokNode::rotation>,
         .write =
             [](const VokNode& node, VokFile& file, std::string_view name) {
                 if (HasAngles(node.rotation) || node.rotation.order != RotationOrder::xyz)
                     WriteRotationElement(file, name, node.rotation);
             }},
        {.name = "rotAxisEul",
         .start = ReadOrder<&VokNode::rotationAxis>,
         .data = ReadAngles<&VokNode::rotationAxis>,
         // The order alone does not cause the element: an axis without angles turns nothing.
         .write =
             [](const VokNode& node, VokFile& file, std::string_view name) {
                 if (HasAngles(node.rotationAxis))
                     WriteRotationElement(file, name, node.rotationAxis);
             }},
        {.name = "scale",
         .data = ReadVector3<&VokNode::scale>,
         .write = WriteVector3UnlessDefault<&VokNode::scale, kOnes>},
        {.name = "shear",
         .data = ReadVector3<&VokNode::shear>,
         .write = WriteVector3UnlessDefault<&VokNode::shear, kZeros>},
        {.name = "scalePivot",
         .data = ReadPosition<&VokNode::scalePivot>,
         .write = WriteVector3UnlessDefault<&VokNode::scalePivot, kZeros>},
        {.name = "scalePivotTranslation",
         .data = ReadPosition<&VokNode::scalePivotTranslation>,
         .write = WriteVector3UnlessDefault<&VokNode::scalePivotTranslation, kZeros>},
        {.name = "rotatePivot",
         .data = ReadPosition<&VokNode::rotatePivot>,
         .write = WriteVector3UnlessDefault<&VokNode::rotatePivot, kZeros>},
        {.name = "rotatePivotTranslation",
         .data = ReadPosition<&VokNode::rotatePivotTranslation>,
         .write = WriteVector3UnlessDefault<&VokNode::rotatePivotTranslation, kZeros>},
    };
    return rows;
}

std::span<const VokAttributeRow<VokNode>> VokNode::AttributeRows() {
    static constexpr VokAttributeRow<VokNode> rows[] = {
        {.read =
             [](VokNode& node, const VokAttributes& attributes) {
                 if (const char* text = attributes.Find("parentEffect"))
                     node.parentEffect = ParseParentEffect(text, &node);
             },
         .write =
             [](const VokNode& node, VokAttributes& attributes) {
                 if (node.parentEffect != ParentEffect::Normal)
                     attributes.SetString("parentEffect",
                                          GetParentEffectText(node.parentEffect, &node));
             }},
    };
    return rows;
}

VokMatrix VokNode::GetLocalMatrix() const {
    using namespace VokMath;
    const VokVector4 &t = translate, &rp = rotatePivot, &rpt = rotatePivotTranslation;
    const VokVector4 &sp = scalePivot, &spt = scalePivotTranslation;

    VokMatrix m = Translation(t.x + rpt.x + rp.x, t.y + rpt.y + rp.y, t.z + rpt.z + rp.z);
    m = MultiplyAffine(FromQuaternion(EulerToQuaternion(rotation)), m);
    m = MultiplyAffine(FromQuaternion(EulerToQuaternion(rotationAxis)), m);
    m = MultiplyAffine(Translation(spt.x + sp.x - rp.x, spt.y + sp.y - rp.y, spt.z + sp.z - rp.z),
                       m);
    m = MultiplyAffine(Scale(scale.x, scale.y, scale.z), m);
    m = MultiplyAffine(Shear(shear.x, shear.y, shear.z), m);
    return MultiplyAffine(Translation(-sp.x, -sp.y, -sp.z), m);
}
