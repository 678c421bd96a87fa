#include <VokLib/Objects/Constraints/VokSpringConstraint.h>

#include <VokLib/Document/VokFields.h>

using namespace VokFields;

std::span<const VokChildElement<VokSpringConstraint>> VokSpringConstraint::ChildElements() {
    static constexpr VokChildElement<VokSpringConstraint> rows[] = {
        {.name = "stiffness",
         .data = ReadFloat<&VokSpringConstraint::stiffness>,
         .write = WriteFloat<&VokSpringConstraint::stiffness>},
        {.name = "restLength",
         .data = ReadFloat<&VokSpringConstraint::restLength>,
         .write = WriteFloat<&VokSpringConstraint::restLength>},
        {.name = "damping",
         .data = ReadFloat<&VokSpringConstraint::damping>,
         .write = WriteFloat<&VokSpringConstraint::damping>},
    };
    return rows;
}
