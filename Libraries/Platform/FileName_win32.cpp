#include "FileName_win32.h"

#include <Platform/Paths.h>

#include <algorithm>
#include <iterator>

namespace Platform {

namespace {

constexpr const char* kPlainDevices[] = {"NUL", "CON", "CONIN$", "CONOUT$"};
constexpr const char* kDevices = "\\\\.\\";

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

/// Whether a name begins with \\?\ or \\.\, with whichever separators.
bool IsDevicePath(const std::string& path) {
    return path.size() >= 4 && IsSeparator(path[0]) && IsSeparator(path[1]) &&
           (path[2] == '?' || path[2] == '.') && IsSeparator(path[3]);
}

bool IsPlainDevice(const std::string& path) {
    return std::any_of(std::begin(kPlainDevices), std::end(kPlainDevices),
                       [&path](const char* device) { return CompareNames(path, device) == 0; });
}

}  // namespace

bool NamesStream(const std::string& path) {
    const std::size_t colon = path.rfind(':');
    return colon != std::string::npos && colon != (IsDevicePath(path) ? 5 : 1);
}

// Which names those are differs between versions of the system, so that it is asked.
bool HidesDevice(const std::string& path) {
    if (IsDevicePath(path) || IsPlainDevice(path)) return false;
    const std::optional<std::string> full = FullPath(path);
    return full && full->starts_with(kDevices);
}

}  // namespace Platform
