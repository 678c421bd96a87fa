#include <Platform/Folders.h>
#include <Platform/Paths.h>
#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Saving/VoktOutputPath.h>

#include <algorithm>
#include <optional>

namespace {

constexpr const char* kSeparators = "/\\";

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool IsRelative(const std::string& path) {
    if (path.size() > 1 && path[1] == ':') return false;
    return path.empty() || !IsSeparator(path.front());
}

}  // namespace

std::string OutputSystemPath(std::string path) {
    if (!Platform::BackslashSeparates()) std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string MakeOutputPath(const std::string& path, const VoktUniverse& universe) {
    std::string name = path;
    const auto* start = universe.FetchByTypeAndName<VoktAtomString>("VoktTool_cwd");
    if (start != nullptr && !start->value.empty() && IsRelative(path)) {
        name = start->value;
        if (!IsSeparator(name.back())) name += '/';
        name += path;
    }
    std::optional<std::string> full = Platform::FullOutputPath(OutputSystemPath(std::move(name)));
    if (!full.has_value()) QelTools::Common::ThrowException("_fullpath failed");
    const std::size_t separator = full->find_last_of(kSeparators);
    // Nothing in front of the separator is the root, which is there.
    if (separator != std::string::npos && separator != 0) CreateFolder(full->substr(0, separator));
    std::replace(full->begin(), full->end(), '\\', '/');
    return *std::move(full);
}

void CreateFolder(const std::string& folder) {
    const bool isDrive = folder.size() == 2 && folder[1] == ':';
    if (isDrive || Platform::IsFolder(folder)) return;
    if (Platform::IsRegularFile(folder))
        QelTools::Common::ThrowException("Cannot create folder '" + folder +
                                         "' since a file of that name already exists");
    if (!Platform::CreateFolders(folder))
        QelTools::Common::ThrowException("Failed to create folder " + folder);
}
