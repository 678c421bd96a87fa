#include "FileNames/VokFilenameTranslatorRelative.h"

#include <VokLib/Text/VokPathText.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>

int VokFilenameTranslatorRelative::FromAbsolute(std::string& out, const std::string& absoluteName,
                                                const VokObj* object) const {
    out = VokPathText::MakeRelativePath(absoluteName, VokObj::GetWorld(object)->GetFilename());
    std::replace(out.begin(), out.end(), '\\', '/');
    return 0;
}

int VokFilenameTranslatorRelative::ToAbsolute(std::string& out, const std::string& name,
                                              const VokObj* object) const {
    out = VokPathText::TidyAbsolutePath(name, VokObj::GetWorld(object)->GetFilename());
    std::replace(out.begin(), out.end(), '/', '\\');
    return 0;
}
