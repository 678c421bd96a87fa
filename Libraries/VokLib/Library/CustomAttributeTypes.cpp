#include "Library/CustomAttributeTypes.h"

#include <VokLib/CustomData/VokCustomAttributeEnum.h>
#include <VokLib/CustomData/VokCustomAttributeFilename.h>
#include <VokLib/CustomData/VokCustomAttributeFloatArray.h>
#include <VokLib/CustomData/VokCustomAttributeNumeric.h>
#include <VokLib/CustomData/VokCustomAttributeString.h>
#include <VokLib/Links/VokCustomAttributeObjLink.h>

#include <utility>

namespace {

template <class Attribute>
std::unique_ptr<VokCustomAttribute> Make(std::string name, std::string_view type, bool isArray) {
    return std::make_unique<Attribute>(std::move(name), type, isArray);
}

struct Type {
    std::string_view keyword;
    VokCustomAttributeFactory factory;
};

constexpr Type kTypes[] = {
    {"bool", Make<VokCustomAttributeNumeric<bool>>},
    {"int", Make<VokCustomAttributeNumeric<int>>},
    {"float", Make<VokCustomAttributeNumeric<float>>},
    {"vector2", Make<VokCustomAttributeNumeric<VokVector2>>},
    {"vector3", Make<VokCustomAttributeNumeric<VokVector3>>},
    {"vector4", Make<VokCustomAttributeNumeric<VokVector4>>},
    {"enum", Make<VokCustomAttributeEnum>},
    {"string", Make<VokCustomAttributeString>},
    {"filename", Make<VokCustomAttributeFilename>},
    {"floatarray", Make<VokCustomAttributeFloatArray>},
    {"objlink", Make<VokCustomAttributeObjLink>},
};

}  // namespace

void RegisterCustomAttributes() {
    for (const Type& type : kTypes)
        RegisterCustomAttributeFactory(MakeTypeId(type.keyword), type.factory);
}

void UnregisterCustomAttributes() {
    for (const Type& type : kTypes) UnregisterCustomAttributeFactory(MakeTypeId(type.keyword));
}
