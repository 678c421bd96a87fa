#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Stages/VoktMultipleWorldComponent.h>

#include <vector>

VoktMultipleWorldComponent::VoktMultipleWorldComponent(const VoktObjFilter* objectFilter)
    : filter(objectFilter) {}

VoktMultipleWorldComponent::~VoktMultipleWorldComponent() noexcept(false) = default;

void VoktMultipleWorldComponent::Process(VoktUniverse& universe) {
    std::vector<VoktAtom*> atoms;
    std::vector<std::string> names;
    universe.FetchAllByTypeWithNames(VoktAtomVokWorld::kType, atoms, names);
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (!worldName.empty() && names[i] != worldName) continue;
        currentWorld = &dynamic_cast<VoktAtomVokWorld&>(*atoms[i]).world;
        currentWorldName = names[i];
        ProcessWorld(universe);
    }
}

VokWorld& VoktMultipleWorldComponent::GetCurrentWorld() const {
    if (currentWorld == nullptr) QelTools::Common::ThrowInternalError();
    return *currentWorld;
}

std::string VoktMultipleWorldComponent::DecorateAtomName(const std::string& base) const {
    return currentWorldName == "world" ? base : base + "_" + currentWorldName;
}
