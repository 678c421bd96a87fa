#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokTranslationConstraint>>
VokTranslationConstraint::ChildElements() {
    static constexpr VokChildElement<VokTranslationConstraint> rows[] = {
        {.name = "offset",
         .data = ReadPosition<&VokTranslationConstraint::offset>,
         .write = WriteVector3<&VokTranslationConstraint::offset>},
    };
    return rows;
}
