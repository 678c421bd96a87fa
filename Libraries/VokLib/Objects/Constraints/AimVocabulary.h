#pragma once

#include <VokLib/Document/VokFields.h>
#include <VokLib/Objects/Constraints/VokAimFields.h>

#include <array>

/// The child elements that the types with VokAimFields share.
namespace AimVocabulary {

void ReadGlobalUp(VokAimFields& fields, VokParse& parse);
void WriteGlobalUp(const VokAimFields& fields, VokFile& file, std::string_view name);
void ReadUpObject(VokAimFields& fields, VokParse& parse, VokObj& owner);
void WriteUpObject(const VokAimFields& fields, VokFile& file, std::string_view name);

template <class Type>
constexpr std::array<VokChildElement<Type>, 5> ChildElements() {
    using namespace VokFields;
    return {{
        {.name = "offset",
         .start = ReadOrderStrictly<&Type::offset>,
         .data = ReadAngles<&Type::offset>,
         .write = WriteRotation<&Type::offset>},
        {.name = "aim", .data = ReadPosition<&Type::aim>, .write = WriteVector3<&Type::aim>},
        {.name = "up", .data = ReadPosition<&Type::up>, .write = WriteVector3<&Type::up>},
        {.name = "globalup",
         .data = [](Type& object, VokParse& parse) { ReadGlobalUp(object, parse); },
         .write = [](const Type& object, VokFile& file,
                     std::string_view name) { WriteGlobalUp(object, file, name); }},
        {.name = "upobject",
         .start = [](Type& object, VokParse& parse) { ReadUpObject(object, parse, object); },
         .write = [](const Type& object, VokFile& file,
                     std::string_view name) { WriteUpObject(object, file, name); }},
    }};
}

}  // namespace AimVocabulary
