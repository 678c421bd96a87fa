#include "FileNames/VokFilenameTranslatorQEL.h"

#include <Platform/Environment.h>
#include <QelTools/AsciiText.h>
#include <QelTools/Exception.h>

#include "FileNames/SlashText.h"

#include <optional>
#include <string_view>

namespace {

constexpr const char* kProjectVariable = "qel_tools_current_project";
constexpr std::string_view kNoProject = "No tools current project defined. ";
constexpr std::string_view kNoAssetRoot =
    "No tools asset root directory environment variable defined. ";
constexpr std::string_view kNoExportRoot =
    "No tools export root directory environment variable defined. ";
constexpr std::string_view kSceneSuffix = ".qeli";

std::string ReadRoot(const std::string& variable, std::string_view failure, std::string& errors) {
    const std::optional<std::string> value = Platform::Environment(variable);
    if (!value) {
        errors += failure;
        return {};
    }
    return SlashText::NormaliseToSlashes(SlashText::Fold(*value) + "/");
}

/// True when the first `count` characters agree but for letter case; a text that is shorter agrees
/// only with one that ends in the same place.
bool BeginsAlike(std::string_view a, std::string_view b, std::size_t count) {
    return QelTools::Common::EqualsIgnoringCase(a.substr(0, count), b.substr(0, count));
}

std::string DropFront(const std::string& text, std::size_t count) {
    return count < text.size() ? text.substr(count) : std::string();
}

}  // namespace

VokFilenameTranslatorQEL::VokFilenameTranslatorQEL(bool primary)
    : VokFilenameTranslator("qelrootrelative", primary) {
    const std::optional<std::string> project = Platform::Environment(kProjectVariable);
    if (!project) errorText += kNoProject;
    const std::string prefix = project.value_or(std::string());
    assetRoot = ReadRoot(prefix + "_asset_root", kNoAssetRoot, errorText);
    exportRoot = ReadRoot(prefix + "_export_root", kNoExportRoot, errorText);
}

void VokFilenameTranslatorQEL::CheckRoots() const {
    if (!errorText.empty()) QelTools::Common::ThrowException(errorText);
}

int VokFilenameTranslatorQEL::FromAbsolute(std::string& out, const std::string& absoluteName,
                                           const VokObj*) const {
    CheckRoots();
    if (assetRoot.empty() || exportRoot.empty()) {
        out = SlashText::NormaliseToSlashes(absoluteName);
        return 1;
    }
    const std::string path = SlashText::Fold(SlashText::NormaliseToSlashes(absoluteName));
    const std::size_t compared = assetRoot.size();
    if (BeginsAlike(path, assetRoot, compared)) {
        out = DropFront(path, assetRoot.size());
    } else if (BeginsAlike(path, exportRoot, compared)) {
        // The export root is compared in as many characters as the asset root has, and cut in its
        // own length: names in existing documents were made this way.
        out = DropFront(path, exportRoot.size());
    } else {
        out = path;
        return 1;
    }
    out = SlashText::NormaliseToSlashes(out);
    return 0;
}

int VokFilenameTranslatorQEL::ToAbsolute(std::string& out, const std::string& name,
                                         const VokObj*) const {
    CheckRoots();
    if (assetRoot.empty() || exportRoot.empty()) {
        out = SlashText::NormaliseToBackslashes(name);
        return 1;
    }
    std::string absolute = name;
    const bool isComplete = name.starts_with('$') || name.find(':') != std::string::npos;
    if (!isComplete) absolute = (name.ends_with(kSceneSuffix) ? exportRoot : assetRoot) + name;
    out = SlashText::NormaliseToBackslashes(std::move(absolute));
    return 0;
}
