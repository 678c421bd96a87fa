#include <VokLib/Objects/Geometry/VokBlendshape.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

std::span<const VokAttributeRow<VokBlendshape>> VokBlendshape::AttributeRows() {
    static constexpr VokAttributeRow<VokBlendshape> rows[] = {
        {.read =
             [](VokBlendshape& shape, const VokAttributes& attributes) {
                 ReadLink(shape.controller, attributes, "controller");
             },
         .write =
             [](const VokBlendshape& shape, VokAttributes& attributes) {
                 WriteLink(shape.controller, attributes, "controller");
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokBlendshape>> VokBlendshape::ChildElements() {
    static constexpr VokChildElement<VokBlendshape> rows[] = {
        {.name = "target",
         .start =
             [](VokBlendshape& shape, VokParse& parse) {
                 shape.targets.emplace_back().weightIndex =
                     parse.GetAttributes().GetUnsigned("weightIndex", 0);
             },
         .write = WriteTargets},
    };
    return rows;
}

void VokBlendshape::ParseStartTag(VokParse& parse) {
    // Whatever stands in a target is its stage, and none of the shape's children.
    if (ParseDepth() != 0 || OpenChild() != "target") return VokElement::ParseStartTag(parse);
    ReadBlendStage(targets.back().stage, parse, *this);
}

const VokBlendshape::Target& VokBlendshape::GetTarget(std::size_t index) const {
    if (targets.empty()) ThrowVokException("No blend targets", this);
    if (index >= targets.size()) ThrowVokException("Weight index out of range", this);
    return targets[index];
}

void VokBlendshape::WriteTargets(const VokBlendshape& shape, VokFile& file, std::string_view name) {
    if (shape.targets.empty()) ThrowVokException("No blend targets", &shape);
    for (const Target& target : shape.targets) {
        if (target.stage == nullptr) ThrowVokException("Blend target entry is NULL", &shape);
        VokAttributes attributes;
        attributes.SetUnsigned("weightIndex", target.weightIndex);
        file.OpenTag(name, attributes);
        target.stage->Write(file);
        file.CloseTag(name);
    }
}
