#include <Platform/Paths.h>

#include "FileName_win32.h"
#include "WideText_win32.h"

#include <direct.h>
#include <stdlib.h>
#include <windows.h>

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

bool EnterFolder(const std::string& path) {
    return _chdir(path.c_str()) == 0;
}

std::optional<std::string> FullPath(const std::string& path) {
    if (path.empty()) return std::nullopt;
    char buffer[kLongestPath];
    if (_fullpath(buffer, path.c_str(), kLongestPath) == nullptr) return std::nullopt;
    return buffer;
}

std::optional<std::string> FullOutputPath(const std::string& path) {
    std::optional<std::string> full = FullPath(path);
    if (full &&
        (HasShortenedFolderInFull(*full) || (IsDevicePath(path) && HasShortenedFolder(path))))
        full.reset();
    return full;
}

std::filesystem::path ToPath(const std::string& name) {
    return WideText(name);
}

std::string FromPath(const std::filesystem::path& path) {
    return NarrowText(path.wstring());
}

std::string LastName(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

int CompareNames(const std::string& a, const std::string& b) {
    return CompareStringOrdinal(WideText(a).c_str(), -1, WideText(b).c_str(), -1, TRUE) -
           CSTR_EQUAL;
}

bool BackslashSeparates() {
    return true;
}

}  // namespace Platform
