#include <Platform/TemporaryFile.h>

#include <windows.h>

namespace Platform {

std::string TemporaryFolder() {
    char folder[MAX_PATH + 1];
    const DWORD length = GetTempPathA(sizeof folder, folder);
    return length > 0 && length < sizeof folder ? std::string(folder, length) : std::string(".\\");
}

std::optional<std::string> CreateTemporaryFile(const std::string& prefix) {
    char name[MAX_PATH];
    if (GetTempFileNameA(TemporaryFolder().c_str(), prefix.c_str(), 0, name) == 0)
        return std::nullopt;
    return name;
}

}  // namespace Platform
