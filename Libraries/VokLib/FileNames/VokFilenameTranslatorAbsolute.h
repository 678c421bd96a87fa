#pragma once

#include <VokLib/Document/VokFilenameTranslator.h>

/// The form "absolute": names stand as they are, in lower case.
class VokFilenameTranslatorAbsolute : public VokFilenameTranslator {
  public:
    explicit VokFilenameTranslatorAbsolute(bool primary)
        : VokFilenameTranslator("absolute", primary) {}

    int FromAbsolute(std::string& out, const std::string& absoluteName,
                     const VokObj* object) const override;
    int ToAbsolute(std::string& out, const std::string& name, const VokObj* object) const override;
};
