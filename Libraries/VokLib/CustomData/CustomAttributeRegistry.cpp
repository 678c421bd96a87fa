#include <VokLib/CustomData/VokCustomAttribute.h>

#include <map>
#include <utility>

#include <VokLib/Base/VokException.h>

namespace {

using Registry = std::map<VokTypeId, VokCustomAttributeFactory>;

Registry& GetRegistry() {
    static Registry registry;
    return registry;
}

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
