#pragma once

#include <VokLib/Document/VokFilenameTranslator.h>

/// The form "qelirelative": names are relative to the document of the object that holds them.
class VokFilenameTranslatorRelative : public VokFilenameTranslator {
  public:
    explicit VokFilenameTranslatorRelative(bool primary)
        : VokFilenameTranslator("qelirelative", primary) {}

    int FromAbsolute(std::string& out, const std::string& absoluteName,
                     const VokObj* object) const override;
    int ToAbsolute(std::string& out, const std::string& name, const VokObj* object) const override;
};
