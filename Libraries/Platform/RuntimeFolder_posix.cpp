#include "RuntimeFolder_posix.h"

#include <Platform/Environment.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace Platform {

namespace {

constexpr mode_t kUserAlone = 0700;
constexpr mode_t kOthersMayWrite = S_IWGRP | S_IWOTH;

std::uint32_t LastError() {
    return static_cast<std::uint32_t>(errno);
}

// Anybody can make a folder in /tmp under the name that a user's tools will look for.
std::uint32_t CheckOwner(const OwnedDescriptor& folder) {
    struct stat status {};
    if (fstat(folder.Get(), &status) != 0) return LastError();
    if (status.st_uid != geteuid() || (status.st_mode & kOthersMayWrite) != 0) return EACCES;
    return 0;
}

}  // namespace

std::uint32_t OpenRuntimeFolder(const PipeAddress& address, bool create, OwnedDescriptor& folder) {
    // A relative path would lead each program to a folder of its own.
    std::string path = Environment("XDG_RUNTIME_DIR").value_or("");
    const bool ofSession = path.starts_with('/');
    if (!ofSession) path = "/tmp/" + address.application + "-" + std::to_string(geteuid());
    if (create) mkdir(path.c_str(), kUserAlone);
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | (ofSession ? 0 : O_NOFOLLOW);
    folder.Reset(open(path.c_str(), flags));
    if (folder.Get() < 0) return LastError();
    return ofSession ? 0 : CheckOwner(folder);
}

sockaddr_un SocketAddress(const OwnedDescriptor& folder, const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(folder.Get()) + "/" + name;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

}  // namespace Platform
