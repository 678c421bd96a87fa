#include <VokLib/Objects/Animation/VokBlend.h>

#include <VokLib/Document/VokFields.h>

#include <cmath>

using namespace VokFields;

std::span<const VokAttributeRow<VokBlend>> VokBlend::AttributeRows() {
    static constexpr VokAttributeRow<VokBlend> rows[] = {
        {.read =
             [](VokBlend& blend, const VokAttributes& attributes) {
                 ReadLink(blend.target, attributes, "target");
             },
         .write = [](const VokBlend& blend,
                     VokAttributes& attributes) { WriteLink(blend.target, attributes, "target"); }},
        {.read =
             [](VokBlend& blend, const VokAttributes& attributes) {
                 blend.channel = attributes.GetString("channel");
             },
         .write =
             [](const VokBlend& blend, VokAttributes& attributes) {
                 attributes.SetString("channel", blend.channel);
             }},
    };
    return rows;
}

std::span<const VokChildElement<VokBlend>> VokBlend::ChildElements() {
    static constexpr VokChildElement<VokBlend> rows[] = {
        // An absent weight reads as 0 although a weight of 1 is what is left out: 1 does not
        // survive a round trip.
        {.name = "input",
         .start =
             [](VokBlend& blend, VokParse& parse) {
                 const VokAttributes& attributes = parse.GetAttributes();
                 blend.inputs.push_back(
                     {attributes.GetFloat("value", 0), attributes.GetFloat("weight", 0)});
             },
         .write =
             [](const VokBlend& blend, VokFile& file, std::string_view name) {
                 for (const Input& input : blend.inputs) {
                     VokAttributes attributes;
                     attributes.SetFloat("value", input.value);
                     if (std::fabs(input.weight - 1) > 1e-6f)
                         attributes.SetFloat("weight", input.weight);
                     file.EmptyTag(name, attributes);
                 }
             }},
    };
    return rows;
}
