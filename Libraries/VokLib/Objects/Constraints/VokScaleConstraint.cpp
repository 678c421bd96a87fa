#include <VokLib/Objects/Constraints/VokScaleConstraint.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokScaleConstraint>> VokScaleConstraint::ChildElements() {
    static constexpr VokChildElement<VokScaleConstraint> rows[] = {
        {.name = "offset",
         .data = ReadVector3<&VokScaleConstraint::offset>,
         .write = WriteVector3<&VokScaleConstraint::offset>},
    };
    return rows;
}
