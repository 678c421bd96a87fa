#pragma once

#include <VoktFramework/Stages/VoktComponent.h>
#include <VoktFramework/Stages/VoktObjFilter.h>

#include <string>
#include <utility>

class VokWorld;

/// A stage that runs once for each world.
class VoktMultipleWorldComponent : public VoktComponent {
  public:
    /// `objectFilter` is not owned and may be null: then every object is taken.
    explicit VoktMultipleWorldComponent(const VoktObjFilter* objectFilter = nullptr);
    ~VoktMultipleWorldComponent() noexcept(false) override;

    /// The name of the worlds to work on, "world" at first; empty for every world.
    void SetWorldName(std::string name) { worldName = std::move(name); }

    /// Calls ProcessWorld for each world that `worldName` names, in the order of the universe.
    void Process(VoktUniverse& universe) override;

  protected:
    virtual void ProcessWorld(VoktUniverse& universe) = 0;

    /// The world in hand, after Process the last one. Throws before the first.
    VokWorld& GetCurrentWorld() const;
    /// The name of an atom that is made once for each world: `base` for the world named "world",
    /// else `base`, "_" and the world's name.
    std::string DecorateAtomName(const std::string& base) const;

    std::string worldName = "world";
    const VoktObjFilter* filter;
    VokWorld* currentWorld = nullptr;
    std::string currentWorldName;
};
