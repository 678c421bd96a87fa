#include <VoktFramework/Atoms/VoktUniverse.h>

#include <QelTools/Exception.h>

VoktUniverse::~VoktUniverse() {
    // All atoms die in their order before any entry does.
    for (auto& [type, named] : atomsByType) named.second.reset();
}

void VoktUniverse::Add(std::unique_ptr<VoktAtom> atom, std::string name) {
    std::string type = atom->GetType();
    atomsByType.emplace(std::move(type), std::make_pair(std::move(name), std::move(atom)));
}

VoktAtom* VoktUniverse::FetchByType(const std::string& type) const {
    const auto [first, end] = atomsByType.equal_range(type);
    if (first == end) return nullptr;
    if (std::next(first) != end)
        QelTools::Common::ThrowException("FetchByType() found non-unique object");
    return first->second.second.get();
}

VoktAtom* VoktUniverse::FetchByTypeAndName(const std::string& type, const std::string& name) const {
    const auto [first, end] = atomsByType.equal_range(type);
    for (auto entry = first; entry != end; ++entry)
        if (entry->second.first == name) return entry->second.second.get();
    return nullptr;
}

void VoktUniverse::FetchAllByType(const std::string& type, std::vector<VoktAtom*>& atoms) const {
    const auto [first, end] = atomsByType.equal_range(type);
    for (auto entry = first; entry != end; ++entry) atoms.push_back(entry->second.second.get());
}

void VoktUniverse::FetchAllByTypeWithNames(const std::string& type, std::vector<VoktAtom*>& atoms,
                                           std::vector<std::string>& names) const {
    const auto [first, end] = atomsByType.equal_range(type);
    for (auto entry = first; entry != end; ++entry) {
        atoms.push_back(entry->second.second.get());
        names.push_back(entry->second.first);
    }
}
