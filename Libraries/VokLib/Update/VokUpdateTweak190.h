#pragma once

#include <VokLib/Document/VokUpdate.h>

/// The update that the library brings up. Documents older than 1_9_0 do not tell the form of their
/// file names; `previousFilenameForm` is what they get.
class VokUpdateTweak190 : public VokUpdate {
  public:
    explicit VokUpdateTweak190(std::string previousFilenameForm);

    bool IsCompatible(const std::string& version) override;
    void Update(std::ostream& out, InputBuffer& input, const std::string& version) override;

    const std::string& GetPreviousFilenameForm() const { return previousForm; }

  private:
    std::string previousForm;
};
