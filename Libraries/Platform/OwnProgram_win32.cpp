#include <Platform/OwnProgram.h>
#include <Platform/Paths.h>

#include <windows.h>

namespace Platform {

std::string OwnProgramFile() {
    std::string path(MAX_PATH, '\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::string OwnProgramName() {
    return LastName(OwnProgramFile());
}

std::uint32_t OwnProcessId() {
    return GetCurrentProcessId();
}

}  // namespace Platform
