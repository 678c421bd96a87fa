#pragma once

#include <VoktFramework/Stages/VoktComponent.h>

#include <cstdint>
#include <string>

/// The stage that turns every world of the universe to the up axis asked for.
class VoktChangeUpAxis : public VoktComponent {
  public:
    VoktChangeUpAxis();

    /// Throws a QelTools Exception for a text other than "keep", "y", "z" or none.
    void Validate() override;
    /// Worlds that stand right already are left as they are.
    void Process(VoktUniverse& universe) override;

  private:
    struct Flags;
    enum Mode : std::uint32_t { kKeep = 0, kToY = 1, kToZ = 2 };

    std::uint32_t upAxisMode = kKeep;
    bool changeAnimation = false;
    std::string upAxisText;
};
