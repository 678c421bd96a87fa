#pragma once

#include <VokLib/Document/VokFilenameTranslator.h>

/// The form "qelrootrelative": names are relative to the roots of the current project, which the
/// environment names. Scene documents stand under the export root, all other files under the asset
/// root. A missing environment shows at first use, not at construction: tools that never meet this
/// form need none.
class VokFilenameTranslatorQEL : public VokFilenameTranslator {
  public:
    explicit VokFilenameTranslatorQEL(bool primary);

    int FromAbsolute(std::string& out, const std::string& absoluteName,
                     const VokObj* object) const override;
    int ToAbsolute(std::string& out, const std::string& name, const VokObj* object) const override;

  private:
    void CheckRoots() const;

    std::string assetRoot;
    std::string exportRoot;
    std::string errorText;
};
