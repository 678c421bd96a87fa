#include <Platform/OwnProgram.h>

#include <unistd.h>

namespace Platform {

std::string OwnProgramFile() {
    std::string path(256, '\0');
    for (;;) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return "";
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::uint32_t OwnProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

}  // namespace Platform
