#include <Platform/ReplaceFile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace Platform {

namespace {

constexpr int kMostAttempts = 10000;

std::string FolderPart(const std::string& path) {
    const std::size_t end = path.rfind('/');
    return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

int CopyPermissions(int descriptor, const struct stat& from) {
    // To give a file away is a right that few have; it then stays the user's own.
    const bool isGiven = fchown(descriptor, from.st_uid, from.st_gid) == 0;
    const mode_t granted = isGiven ? 07777 : 0777;
    return fchmod(descriptor, from.st_mode & granted) == 0 ? 0 : errno;
}

}  // namespace

int CreateFileBeside(const std::string& path, std::string& created) {
    const std::string start = FolderPart(path) + ".unfinished-" + std::to_string(getpid()) + "-";
    int descriptor = -1;
    for (int attempt = 0; descriptor < 0 && attempt < kMostAttempts; ++attempt) {
        created = start + std::to_string(attempt);
        descriptor = open(created.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST) return errno;
    }
    if (descriptor < 0) return EEXIST;

    struct stat status;
    int error = 0;
    if (stat(path.c_str(), &status) == 0) error = CopyPermissions(descriptor, status);
    close(descriptor);
    if (error != 0) unlink(created.c_str());
    return error;
}

int ReplaceFile(const std::string& written, const std::string& path) {
    const int descriptor = open(written.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return errno;
    // A crash of the machine must not leave the new name with nothing behind it.
    const int error = fsync(descriptor) == 0 || errno == EINVAL ? 0 : errno;
    close(descriptor);
    if (error != 0) return error;
    return rename(written.c_str(), path.c_str()) == 0 ? 0 : errno;
}

std::string ErrorText(int error) {
    return std::generic_category().message(error);
}

}  // namespace Platform
