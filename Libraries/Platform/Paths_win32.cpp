#include <Platform/Paths.h>

#include <direct.h>
#include <stdlib.h>

namespace Platform {

namespace {

/// What this system's calls for names of files take, with the zero at the end.
constexpr int kLongestPath = 260;

}  // namespace

std::optional<std::string> CurrentDirectory() {
    char buffer[kLongestPath];
    if (_getcwd(buffer, kLongestPath) == nullptr) return std::nullopt;
    return buffer;
}

std::optional<std::string> FullPath(const std::string& path) {
    if (path.empty()) return std::nullopt;
    char buffer[kLongestPath];
    if (_fullpath(buffer, path.c_str(), kLongestPath) == nullptr) return std::nullopt;
    return buffer;
}

bool BackslashSeparates() {
    return true;
}

}  // namespace Platform
