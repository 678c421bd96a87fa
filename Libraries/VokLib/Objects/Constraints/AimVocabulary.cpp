#include "Objects/Constraints/AimVocabulary.h"

#include <VokLib/Document/VokFields.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <string>

namespace {

AimUpMethod ReadUpMethod(std::string_view transform, const VokObj& owner) {
    if (transform == "translate") return AimUpMethod::ObjectTranslation;
    if (transform == "rotate") return AimUpMethod::ObjectRotation;
    ThrowVokException("Unknown aim constraint world up method. \"" + std::string(transform) + "\".",
                      &owner);
}

}  // namespace

namespace AimVocabulary {

void ReadGlobalUp(VokAimFields& fields, VokParse& parse) {
    fields.globalUp = parse.ReadVector3As4();
    // An up object decides the method wherever it stands.
    if (fields.upMethod == AimUpMethod::None) fields.upMethod = AimUpMethod::GlobalVector;
}

void WriteGlobalUp(const VokAimFields& fields, VokFile& file, std::string_view name) {
    if (fields.upMethod == AimUpMethod::GlobalVector ||
        fields.upMethod == AimUpMethod::ObjectRotation)
        VokFields::WriteVector3Element(file, name, fields.globalUp);
}

void ReadUpObject(VokAimFields& fields, VokParse& parse, VokObj& owner) {
    const VokAttributes& attributes = parse.GetAttributes();
    fields.upMethod = ReadUpMethod(attributes.GetString("transform"), owner);
    if (fields.upTarget)
        ThrowVokException("Too many up target objects when parsing aim constraint.", &owner);
    fields.upTarget.emplace(&owner);
    VokFields::ReadLink(*fields.upTarget, attributes, "name");
}

void WriteUpObject(const VokAimFields& fields, VokFile& file, std::string_view name) {
    const bool rotate = fields.upMethod == AimUpMethod::ObjectRotation;
    if (!rotate && fields.upMethod != AimUpMethod::ObjectTranslation) return;
    VokAttributes attributes;
    attributes.SetString("name", fields.upTarget ? fields.upTarget->GetPath().GetText() : "");
    attributes.SetString("transform", rotate ? "rotate" : "translate");
    file.EmptyTag(name, attributes);
}

}  // namespace AimVocabulary
