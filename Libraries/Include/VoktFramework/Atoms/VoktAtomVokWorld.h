#pragma once

#include <VokLib/Tree/VokWorld.h>
#include <VoktFramework/Atoms/VoktAtom.h>

#include <string>

/// A scene document in the universe; the atom owns everything in it.
class VoktAtomVokWorld : public VoktAtom {
  public:
    static constexpr const char* kType = "VoktAtomVokWorld";
    std::string GetType() const override { return kType; }

    VokWorld world;
};
