#include <VokLib/Tree/VokReference.h>

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/VokDependencies.h>

std::span<const VokAttributeRow<VokReference>> VokReference::AttributeRows() {
    static constexpr VokAttributeRow<VokReference> rows[] = {
        {.read =
             [](VokReference& reference, const VokAttributes& attributes) {
                 reference.uri = VokFields::GetRequired(attributes, "uri", &reference);
             },
         .write = [](const VokReference& reference,
                     VokAttributes& attributes) { attributes.SetString("uri", reference.uri); }},
        {.read =
             [](VokReference& reference, const VokAttributes& attributes) {
                 reference.referenceNamespace = attributes.GetString("namespace");
             },
         .write =
             [](const VokReference& reference, VokAttributes& attributes) {
                 attributes.SetString("namespace", reference.referenceNamespace);
             }},
    };
    return rows;
}

bool VokReference::GetDependencies(VokDependencies& files) const {
    VokFields::AddFile(files, uri);
    return VokElement::GetDependencies(files);
}

bool VokReference::UpdateDependencies(VokUpdateDependencies& update) {
    VokFields::UpdateFile(uri, update, this);
    return VokElement::UpdateDependencies(update);
}
