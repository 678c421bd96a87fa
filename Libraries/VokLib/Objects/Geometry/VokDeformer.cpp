#include <VokLib/Objects/Geometry/VokDeformer.h>

#include <VokLib/Document/VokFields.h>

std::span<const VokAttributeRow<VokDeformer>> VokDeformer::AttributeRows() {
    static constexpr VokAttributeRow<VokDeformer> rows[] = {
        {.read =
             [](VokDeformer& deformer, const VokAttributes& attributes) {
                 VokFields::GetRequired(attributes, "target", &deformer);
                 VokFields::ReadLink(deformer.target, attributes, "target");
             },
         .write =
             [](const VokDeformer& deformer, VokAttributes& attributes) {
                 VokFields::WriteLink(deformer.target, attributes, "target");
             }},
    };
    return rows;
}
