#include "FileNames/VokFilenameTranslatorAbsolute.h"

#include "FileNames/SlashText.h"

int VokFilenameTranslatorAbsolute::FromAbsolute(std::string& out, const std::string& absoluteName,
                                                const VokObj*) const {
    out = SlashText::Fold(absoluteName);
    return 0;
}

int VokFilenameTranslatorAbsolute::ToAbsolute(std::string& out, const std::string& name,
                                              const VokObj*) const {
    out = SlashText::Fold(name);
    return 0;
}
