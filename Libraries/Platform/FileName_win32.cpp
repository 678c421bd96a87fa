#include "FileName_win32.h"

#include <Platform/Paths.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Platform {

namespace {

constexpr const char* kPlainDevices[] = {"NUL", "CON", "CONIN$", "CONOUT$"};
constexpr const char* kDevices = "\\\\.\\";
constexpr std::size_t kDevicePrefix = 4;

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool IsPlainDevice(const std::string& path) {
    return std::any_of(std::begin(kPlainDevices), std::end(kPlainDevices),
                       [&path](const char* device) { return CompareNames(path, device) == 0; });
}

bool EndsShortened(std::string_view name) {
    return name.ends_with('.') || name.ends_with(' ');
}

template <class Test>
bool AnyFolder(const std::string& path, Test test) {
    std::size_t begin = IsDevicePath(path) ? kDevicePrefix : 0;
    for (std::size_t end; (end = path.find_first_of("/\\", begin)) != std::string::npos;
         begin = end + 1)
        if (test(std::string_view(path).substr(begin, end - begin))) return true;
    return false;
}

}  // namespace

bool IsDevicePath(const std::string& path) {
    return path.size() >= kDevicePrefix && IsSeparator(path[0]) && IsSeparator(path[1]) &&
           (path[2] == '?' || path[2] == '.') && IsSeparator(path[3]);
}

bool HasShortenedFolder(const std::string& path) {
    return AnyFolder(path, [](std::string_view name) {
        return name != "." && name != ".." && EndsShortened(name);
    });
}

bool HasShortenedFolderInFull(const std::string& fullPath) {
    return AnyFolder(fullPath, EndsShortened);
}

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
