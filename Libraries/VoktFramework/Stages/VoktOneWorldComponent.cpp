#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Stages/VoktOneWorldComponent.h>

namespace {

constexpr const char* kDefaultWorldName = "world";

}  // namespace

VoktOneWorldComponent::VoktOneWorldComponent(const VoktObjFilter* objectFilter)
    : filter(objectFilter) {}

VoktOneWorldComponent::~VoktOneWorldComponent() noexcept(false) = default;

VokWorld& VoktOneWorldComponent::GetWorld(const VoktUniverse& universe) const {
    if (!worldName.empty()) {
        auto* named = universe.FetchByTypeAndName<VoktAtomVokWorld>(worldName);
        if (named == nullptr)
            QelTools::Common::ThrowException("Couldn't find a world named: " + worldName);
        return named->world;
    }
    auto* atom = universe.FetchByTypeAndName<VoktAtomVokWorld>(kDefaultWorldName);
    if (atom == nullptr) atom = universe.FetchByType<VoktAtomVokWorld>();
    if (atom == nullptr) QelTools::Common::ThrowException("Couldn't find a world");
    return atom->world;
}
