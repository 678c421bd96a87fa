#include <VokLib/Objects/Geometry/VokMultiBlendTarget.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

using namespace VokFields;

std::span<const VokChildElement<VokMultiBlendTarget>> VokMultiBlendTarget::ChildElements() {
    static constexpr VokChildElement<VokMultiBlendTarget> rows[] = {
        {.name = "blendStage",
         .start =
             [](VokMultiBlendTarget& target, VokParse& parse) {
                 GetRequired(parse.GetAttributes(), "interpolant", &target);
                 target.stages.emplace_back().interpolant =
                     parse.GetAttributes().GetFloat("interpolant", 0);
             },
         .write =
             [](const VokMultiBlendTarget& target, VokFile& file, std::string_view name) {
                 for (const Stage& stage : target.stages) {
                     if (stage.target == nullptr)
                         ThrowVokException("Blend target entry is NULL", &target);
                     VokAttributes attributes;
                     attributes.SetFloat("interpolant", stage.interpolant);
                     file.OpenTag(name, attributes);
                     stage.target->Write(file);
                     file.CloseTag(name);
                 }
             }},
    };
    return rows;
}

void VokMultiBlendTarget::ParseStartTag(VokParse& parse) {
    if (ParseDepth() != 0 || OpenChild() != "blendStage") return VokElement::ParseStartTag(parse);
    ReadBlendStage(stages.back().target, parse, *this);
}

const VokMultiBlendTarget::Stage& VokMultiBlendTarget::GetStage(std::size_t index) const {
    if (index >= stages.size()) ThrowVokException("Out of range blend target stage index.", this);
    return stages[index];
}
