#include <VokLib/VokNode.h>

#include <VokLib/VokFields.h>
#include <VokLib/VokMath.h>

namespace {

bool IsZero(const VokVector4& v) { return v.x == 0 && v.y == 0 && v.z == 0; }
bool HasAngles(const EulerRotation& r) { return r.x != 0 || r.y != 0 || r.z != 0; }

template <VokVector4 VokNode::*Field>
void ReadPosition(VokNode& node, VokParse& parse) {
    node.*Field = parse.ReadVector3As4();
}

/// Positions are written when they are not zero; the fourth element takes no part.
template <VokVector4 VokNode::*Field>
void WritePosition(const VokNode& node, VokFile& file, std::string_view name) {
    const VokVector4& v = node.*Field;
    if (!IsZero(v)) VokFields::WriteVector3Element(file, name, v.x, v.y, v.z);
}

template <EulerRotation VokNode::*Field>
void ReadOrder(VokNode& node, VokParse& parse) {
    VokFields::ReadRotationOrder(node.*Field, parse.GetAttributes());
}

template <EulerRotation VokNode::*Field>
void ReadAngles(VokNode& node, VokParse& parse) {
    parse.ReadAngles(node.*Field);
}

}  // namespace

std::span<const VokChildElement<VokNode>> VokNode::ChildElements() {
    static constexpr VokChildElement<VokNode> rows[] = {
        {.name = "translate",
         .data = ReadPosition<&VokNode::translate>,
         .write = WritePosition<&VokNode::translate>},
        {.name = "rotEul",
         .start = ReadOrder<&VokNode::rotation>,
         .data = ReadAngles<&VokNode::rotation>,
         .write = [](const VokNode& node, VokFile& file, std::string_view name) {
             if (HasAngles(node.rotation) || node.rotation.order != RotationOrder::xyz)
                 VokFields::WriteRotationElement(file, name, node.rotation);
         }},
        {.name = "rotAxisEul",
         .start = ReadOrder<&VokNode::rotationAxis>,
         .data = ReadAngles<&VokNode::rotationAxis>,
         // The order alone does not cause the element: an axis without angles turns nothing.
         .write = [](const VokNode& node, VokFile& file, std::string_view name) {
             if (HasAngles(node.rotationAxis))
                 VokFields::WriteRotationElement(file, name, node.rotationAxis);
         }},
        {.name = "scale",
         .data = [](VokNode& node, VokParse& parse) { node.scale = parse.ReadVector3(); },
         .write = [](const VokNode& node, VokFile& file, std::string_view name) {
             const VokVector3& s = node.scale;
             if (s.x != 1 || s.y != 1 || s.z != 1)
                 VokFields::WriteVector3Element(file, name, s.x, s.y, s.z);
         }},
        {.name = "shear",
         .data = [](VokNode& node, VokParse& parse) { node.shear = parse.ReadVector3(); },
         .write = [](const VokNode& node, VokFile& file, std::string_view name) {
             const VokVector3& s = node.shear;
             if (s.x != 0 || s.y != 0 || s.z != 0)
                 VokFields::WriteVector3Element(file, name, s.x, s.y, s.z);
         }},
        {.name = "scalePivot",
         .data = ReadPosition<&VokNode::scalePivot>,
         .write = WritePosition<&VokNode::scalePivot>},
        {.name = "scalePivotTranslation",
         .data = ReadPosition<&VokNode::scalePivotTranslation>,
         .write = WritePosition<&VokNode::scalePivotTranslation>},
        {.name = "rotatePivot",
         .data = ReadPosition<&VokNode::rotatePivot>,
         .write = WritePosition<&VokNode::rotatePivot>},
        {.name = "rotatePivotTranslation",
         .data = ReadPosition<&VokNode::rotatePivotTranslation>,
         .write = WritePosition<&VokNode::rotatePivotTranslation>},
    };
    return rows;
}

std::span<const VokAttributeRow<VokNode>> VokNode::AttributeRows() {
    static constexpr VokAttributeRow<VokNode> rows[] = {
        {.read = [](VokNode& node, const VokAttributes& attributes) {
             if (const char* text = attributes.Find("parentEffect"))
                 node.parentEffect = ParseParentEffect(text);
         },
         .write = [](const VokNode& node, VokAttributes& attributes) {
             if (node.parentEffect != ParentEffect::Normal)
                 attributes.SetString("parentEffect", GetParentEffectText(node.parentEffect));
         }},
    };
    return rows;
}
