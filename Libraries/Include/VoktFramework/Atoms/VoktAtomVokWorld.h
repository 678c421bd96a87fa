#pragma once

#include <VokLib/Tree/VokWorld.h>
#include <VoktFramework/Atoms/VoktAtom.h>

#include <string>

/// A scene document in the universe; the atom owns everything in it.
class VoktAtomVokWorld : public VoktAtom {
  public:
    static constexpr const char* kType = "VoktAtomVokWorld";
    VoktAtomVokWorld();
    ~VoktAtomVokWorld() override;

    std::string GetType() const override { return kType; }

    /// From now on worlds stay when their atoms go: a program that ends with its run need not take
    /// them apart object by object. `left` is false at first.
    static void LeaveWorlds(bool left);

    VokWorld& world;
};
