#include <VokLib/VokCustomAttribute.h>

#include <map>
#include <utility>

#include <VokLib/VokCustomAttributeEnum.h>
#include <VokLib/VokCustomAttributeFilename.h>
#include <VokLib/VokCustomAttributeFloatArray.h>
#include <VokLib/VokCustomAttributeNumeric.h>
#include <VokLib/VokCustomAttributeObjLink.h>
#include <VokLib/VokCustomAttributeString.h>
#include <VokLib/VokException.h>

namespace {

using Registry = std::map<VokTypeId, VokCustomAttributeFactory>;

Registry& GetRegistry() {
    static Registry registry;
    return registry;
}

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

void RegisterCustomAttributeFactory(VokTypeId hash, VokCustomAttributeFactory factory) {
    if (!GetRegistry().emplace(hash, factory).second)
        ThrowVokException("Duplicate custom attribute factory");
}

void UnregisterCustomAttributeFactory(VokTypeId hash) {
    if (GetRegistry().erase(hash) == 0)
        ThrowVokException("Attempt to deregister missing custom attribute factory.");
}

VokCustomAttributeFactory FindCustomAttributeFactory(VokTypeId hash) {
    const auto found = GetRegistry().find(hash);
    return found == GetRegistry().end() ? nullptr : found->second;
}

bool HasCustomAttributeFactories() {
    return !GetRegistry().empty();
}

void RegisterCustomAttributes() {
    for (const Type& type : kTypes)
        RegisterCustomAttributeFactory(MakeTypeId(type.keyword), type.factory);
}

void UnregisterCustomAttributes() {
    for (const Type& type : kTypes) UnregisterCustomAttributeFactory(MakeTypeId(type.keyword));
}
