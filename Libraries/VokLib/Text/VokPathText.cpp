#include <VokLib/Text/VokPathText.h>

#include <Platform/Paths.h>
#include <QelTools/AsciiText.h>
#include <QelTools/Exception.h>

#include "Text/FullPathText.h"

#include <algorithm>
#include <optional>
#include <string_view>

using QelTools::Common::ThrowException;
using QelTools::Common::ToLowerAscii;

namespace {

constexpr const char* kSeparators = "/\\";
constexpr std::string_view kParentFolder = "..\\";

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

std::size_t SkipSeparators(const std::string& text, std::size_t at) {
    return std::min(text.find_first_not_of(kSeparators, at), text.size());
}

[[noreturn]] void ThrowNoAbsolutePath(const std::string& path, const std::string& base) {
    ThrowException("failed to construct absolute path from \"" + path + "\" relative to \"" + base +
                   "\"");
}

/// Cuts the last name off `text`, whose first `floor` characters stay.
void CutLastName(std::string& text, std::size_t floor) {
    while (text.size() > floor && IsSeparator(text.back())) text.pop_back();
    while (text.size() > floor && !IsSeparator(text.back())) text.pop_back();
}

/// Takes out each ".." that a separator follows, with the name in front of it, and doubled
/// separators.
std::string ResolveParents(const std::string& path) {
    const std::size_t colon = path.find(':');
    std::size_t at = colon == std::string::npos ? 0 : colon + 1;
    std::string out = path.substr(0, at);
    for (int copied = 0; copied < 2 && at < path.size() && IsSeparator(path[at]); ++copied)
        out += path[at++];
    at = SkipSeparators(path, at);
    const std::size_t floor = out.size();

    for (;;) {
        const std::size_t end = path.find_first_of(kSeparators, at);
        if (end == std::string::npos) return out.append(path, at);
        if (path.compare(at, end - at, "..") == 0) {
            if (out.size() == floor) ThrowException("Too many \"..\" in relative path.");
            CutLastName(out, floor);
        } else {
            out.append(path, at, end + 1 - at);
        }
        at = SkipSeparators(path, end);
    }
}

}  // namespace

std::string VokPathText::MakeRelativePath(const std::string& path, const std::string& base) {
    const std::size_t shorter = std::min(path.size(), base.size());
    std::size_t at = 0;
    while (at < shorter && IsSeparator(path[at]) && IsSeparator(base[at])) ++at;

    std::size_t common = 0;  // behind the last folder that both have
    for (; at < shorter; ++at) {
        if (IsSeparator(path[at]) && IsSeparator(base[at]))
            common = at + 1;
        else if (ToLowerAscii(path[at]) != ToLowerAscii(base[at]))
            break;
    }
    if (common == 0) return path;

    std::string relative;
    for (std::size_t i = common; i < base.size(); ++i)
        if (IsSeparator(base[i])) relative += kParentFolder;
    return relative.append(path, common);
}

std::string VokPathText::MakeAbsolutePath(const std::string& path, const std::string& base) {
    if (path.find(':') != std::string::npos) return path;
    const std::size_t leading = SkipSeparators(path, 0);
    if (leading >= 2) return path;
    if (leading == 1) {
        // Where names begin with a slash there are no drives, and the path is complete.
        if (base.starts_with('/')) return path;
        const std::size_t colon = base.find(':');
        if (colon == std::string::npos) ThrowNoAbsolutePath(path, base);
        return base.substr(0, colon + 1) + path;
    }
    const std::size_t folder = base.find_last_of(kSeparators);
    if (folder == std::string::npos) ThrowNoAbsolutePath(path, base);
    return base.substr(0, folder) + "\\" + path;
}

std::string VokPathText::TidyAbsolutePath(const std::string& path, const std::string& base) {
    const std::string absolute = MakeAbsolutePath(path, base);
    const std::optional<std::string> full =
        FullPathText::Complete(ResolveParents(absolute), base.starts_with('/'));
    if (!full) ThrowException("failed to tidy up absolute path \"" + absolute + "\"");
    return *full;
}
