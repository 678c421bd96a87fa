#include <Platform/OwnProgram.h>
#include <Platform/Paths.h>

#include <unistd.h>

#include <string_view>

namespace Platform {

namespace {

constexpr std::string_view kDeleted = " (deleted)";

}  // namespace

std::string OwnProgramFile() {
    std::string path(256, '\0');
    for (;;) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return "";
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            // The system marks a program whose file was replaced while it runs.
            if (path.ends_with(kDeleted) && access(path.c_str(), F_OK) != 0)
                path.resize(path.size() - kDeleted.size());
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::string OwnProgramName() {
    return LastName(OwnProgramFile());
}

std::uint32_t OwnProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

}  // namespace Platform
