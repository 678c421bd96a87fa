#pragma once

#include <VokLib/Document/VokParse.h>
#include <VoktFramework/Stages/VoktComponent.h>

#include <cstdint>
#include <string>
#include <vector>

/// The stage that reads the scene document named on the command line into a world of the universe.
class VoktLoadQeli : public VoktComponent {
  public:
    VoktLoadQeli();
    ~VoktLoadQeli() noexcept(false) override;

    void AddFlags(VoktCommandLineSyntax& syntax) override;
    void ReadFlags(const VoktCommandLineSyntax& syntax) override;
    /// "-verboseload" and "-quietload" set the verbosity of the VokUpdate singleton. An unknown
    /// flag throws error 200.
    void SetFlag(const std::string& name, const std::string& value) override;
    /// Throws a QelTools::Common::Exception when the input cannot be read, or a required one was
    /// not given.
    void Validate() override;
    /// Leaves a VoktAtomVokWorld under GetWorldName() in the universe; it is there even when the
    /// document is malformed. Does nothing without an input. The input becomes the context of the
    /// error handler's reports.
    void Process(VoktUniverse& universe) override;
    /// "world" for the default input flag, else the flag's name.
    virtual std::string GetWorldName() const;

    /// What the stages behind look at; everything at first.
    void SetWanted(VokParse::Wanted contents) { wanted = contents; }
    const std::string& GetInputFilename() const { return inputFilename; }

  protected:
    bool autoUpdate = false;
    std::string flagName = "in";  ///< Without its dash, as the short name is.
    std::string shortFlagName = "i";
    std::string flagHelp = "Input qeli file";
    std::uint32_t required = 1;  ///< Option bits of the input flag.
    std::string inputFilename;

  private:
    VokParse::Wanted wanted = VokParse::Wanted::Everything;

    std::string InputFlag() const { return "-" + flagName; }
};
