#pragma once

#include "Update/VokUpdateStatic.h"

/// The update that the library brings up. Documents older than 1_9_0 do not tell the form of their
/// file names, because that is the site's; `previousFilenameForm` is what they get.
class VokUpdateTweak190 : public VokUpdateStatic {
  public:
    explicit VokUpdateTweak190(std::string previousFilenameForm);

    XmlDocument LoadDocument(const std::string& uri) override;

    const std::string& GetPreviousFilenameForm() const { return previousForm; }

  private:
    std::string previousForm;
};
