#pragma once

#include <VoktFramework/Stages/VoktComponent.h>
#include <VoktFramework/Stages/VoktObjFilter.h>

#include <string>
#include <utility>

class VokWorld;

/// A stage that works on one world.
class VoktOneWorldComponent : public VoktComponent {
  public:
    /// `objectFilter` is not owned and may be null: then every object is taken.
    explicit VoktOneWorldComponent(const VoktObjFilter* objectFilter = nullptr);
    ~VoktOneWorldComponent() noexcept(false) override;

    /// The name of the world to work on; empty, as at first, for the world named "world" or else
    /// the only one.
    void SetWorldName(std::string name) { worldName = std::move(name); }

  protected:
    /// The world that `worldName` asks for; it stays in its atom. Throws when there is none, or
    /// when several worlds could be meant.
    VokWorld& GetWorld(const VoktUniverse& universe) const;

    std::string worldName;
    const VoktObjFilter* filter;
};
