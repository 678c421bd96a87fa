#include "Text/FullPathText.h"

#include <Platform/Paths.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

constexpr const char* kSeparators = "/\\";

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool HasDrive(const std::string& path) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return path.size() >= 2 && isLetter(path[0]) && path[1] == ':';
}

bool HasServer(const std::string& path, bool slashRooted) {
    if (path.size() < 2 || !IsSeparator(path[0]) || !IsSeparator(path[1])) return false;
    return !slashRooted || path.starts_with("\\\\");
}

/// `root`, then the names of `rest` parted by `separator`; ".." takes a name off, but for the first
/// `fixed` ones.
std::string Canonical(std::string root, std::string_view rest, char separator, std::size_t fixed) {
    std::vector<std::string_view> names;
    const bool endsInSeparator = !rest.empty() && IsSeparator(rest.back());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(kSeparators), rest.size());
        const std::string_view name = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (name == "..") {
            if (names.size() > fixed) names.pop_back();
        } else if (!name.empty() && name != ".") {
            names.push_back(name);
        }
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i != 0) root += separator;
        root += names[i];
    }
    if (endsInSeparator && !names.empty()) root += separator;
    return root;
}

}  // namespace

std::optional<std::string> FullPathText::Complete(const std::string& path, bool slashRooted) {
    const bool backslashHere = Platform::BackslashSeparates();
    if (HasDrive(path)) {
        if (backslashHere) return Platform::FullPath(path);
        return Canonical(path.substr(0, 2) + "\\", std::string_view(path).substr(2), '\\', 0);
    }
    if (HasServer(path, slashRooted)) {
        if (backslashHere) return Platform::FullPath(path);
        return Canonical("\\\\", path, '\\', 2);  // the server and what it shares
    }
    if (slashRooted && backslashHere && !path.empty() && IsSeparator(path[0]))
        return Canonical("/", path, '/', 0);
    std::string own = path;
    if (!backslashHere) std::replace(own.begin(), own.end(), '\\', '/');
    return Platform::FullPath(own);
}
