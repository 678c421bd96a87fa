#pragma once

#include <VoktFramework/Stages/VoktComponent.h>

#include <cstdint>
#include <string>

/// The base of stages that write files: the flag -forceWrite, which lets them replace read-only
/// files.
class VoktSave : public VoktComponent {
  public:
    /// With `hide` 1 this class and those derived from it declare no flags.
    explicit VoktSave(std::uint32_t hide);
    ~VoktSave() noexcept(false) override;

    /// Also takes the writable test of all outputs away from the parser: only Validate knows about
    /// -forceWrite.
    void AddFlags(VoktCommandLineSyntax& syntax) override;
    void ReadFlags(const VoktCommandLineSyntax& syntax) override;
    /// An unknown flag throws error 200.
    void SetFlag(const std::string& name, const std::string& value) override;

  protected:
    std::uint32_t hideFlags;
    bool forceWrite = false;
};
