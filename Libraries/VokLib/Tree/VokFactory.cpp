#include <VokLib/Tree/VokFactory.h>

#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>
#include <string>
#include <unordered_map>

namespace {

struct Entry {
    std::string name;
    VokFactory::Function factory;
};
/// By identifier; names whose identifiers collide stand side by side.
using Registry = std::unordered_multimap<VokTypeId, Entry>;

Registry& GetRegistry() {
    static Registry registry;
    return registry;
}

Registry::iterator FindEntry(std::string_view name, VokTypeId id) {
    const auto [first, last] = GetRegistry().equal_range(id);
    const auto found =
        std::find_if(first, last, [name](const auto& item) { return item.second.name == name; });
    return found != last ? found : GetRegistry().end();
}

}  // namespace

void VokFactory::RegisterFactory(std::string_view name, Function factory) {
    const VokTypeId id = MakeTypeId(name);
    if (FindEntry(name, id) != GetRegistry().end())
        ThrowVokException("Factory already registered for object name \"" + std::string(name) +
                          "\"");
    GetRegistry().emplace(id, Entry{std::string(name), factory});
}

VokFactory::Function VokFactory::FindFactory(std::string_view name, VokTypeId nameId) {
    const auto found = FindEntry(name, nameId);
    return found != GetRegistry().end() ? found->second.factory : nullptr;
}

VokFactory::Function VokFactory::FindFactory(std::string_view name) {
    return FindFactory(name, MakeTypeId(name));
}

void VokFactory::UnregisterFactory(std::string_view name) {
    const auto found = FindEntry(name, MakeTypeId(name));
    if (found != GetRegistry().end()) GetRegistry().erase(found);
}

std::size_t VokFactory::FactoryCount() {
    return GetRegistry().size();
}

std::vector<std::string_view> VokFactory::GetNames() {
    std::vector<std::string_view> names;
    for (const auto& [id, entry] : GetRegistry()) names.push_back(entry.name);
    std::sort(names.begin(), names.end());
    return names;
}
