#include <VoktFramework/Atoms/VoktAtomVokWorld.h>

namespace {

bool areWorldsLeft = false;

}  // namespace

VoktAtomVokWorld::VoktAtomVokWorld() : world(*new VokWorld) {}

VoktAtomVokWorld::~VoktAtomVokWorld() {
    if (!areWorldsLeft) delete &world;
}

void VoktAtomVokWorld::LeaveWorlds(bool left) {
    areWorldsLeft = left;
}
