#include <Platform/FileTests.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

namespace Platform {

namespace {

std::optional<mode_t> ModeOf(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return status.st_mode;
}

bool Permits(const std::string& path, int permission) {
    return faccessat(AT_FDCWD, path.c_str(), permission, AT_EACCESS) == 0;
}

bool Opens(const std::string& path, int access) {
    const int descriptor = open(path.c_str(), access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return false;
    close(descriptor);
    return true;
}

}  // namespace

bool IsReadable(const std::string& path) {
    const std::optional<mode_t> mode = ModeOf(path);
    if (!mode || S_ISDIR(*mode)) return false;
    // Opening a named pipe and closing it again would wake the writer at its other end and break
    // its pipe.
    if (S_ISFIFO(*mode)) return Permits(path, R_OK);
    return Opens(path, O_RDONLY);
}

bool IsWritable(const std::string& path) {
    const std::optional<mode_t> mode = ModeOf(path);
    if (mode && S_ISFIFO(*mode)) return Permits(path, W_OK) || !Permits(path, R_OK);
    return Opens(path, O_WRONLY) || !IsReadable(path);
}

bool GrantsWrite(const std::string& path) {
    return Permits(path, W_OK);
}

int MakeOwnerWritable(const std::string& path) {
    const std::optional<mode_t> mode = ModeOf(path);
    if (!mode) return errno;
    return chmod(path.c_str(), (*mode & 07777) | S_IRUSR | S_IWUSR) == 0 ? 0 : errno;
}

}  // namespace Platform
