#pragma once

#include <VoktFramework/Saving/VoktSaveBiffBase.h>

#include <string>
#include <vector>

class VoktAtomBiff;

/// The stage that writes the finished binary layout of the universe, in little-endian form, in
/// big-endian form or both.
class VoktSaveBiff : public VoktSaveBiffBase {
  public:
    explicit VoktSaveBiff(std::uint32_t hide);
    ~VoktSaveBiff() noexcept(false) override;

    void AddFlags(VoktCommandLineSyntax& syntax) override;
    void ReadFlags(const VoktCommandLineSyntax& syntax) override;
    void SetFlag(const std::string& name, const std::string& value) override;
    /// Throws a QelTools::Common::Exception when no output was named, or it is read-only and stays
    /// so.
    void Validate() override;
    /// Writes the layout, taking relative names from the run's folder and making missing folders.
    /// Both forms get their suffix behind the whole name; the first file is complete when the
    /// second is begun. A file that cannot be opened throws error 204.
    void Process(VoktUniverse& universe) override;

    const std::string& GetOutputFilename() const { return outputFilename; }
    /// The names of the files that Process writes, as the flags give them.
    std::vector<std::string> GetOutputFiles() const;

  protected:
    std::string outputFilename;
    /// The name of the atom to save; empty for the universe's only one.
    std::string biffName;

  private:
    void Save(const std::string& filename, VoktAtomBiff& atom, bool bigEndian,
              const VoktUniverse& universe) const;
};
