#include <Platform/LinkTarget.h>

#include "LinkTarget_posix.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Platform {

namespace {

/// As many as the system follows itself.
constexpr int kMostLinks = 40;

int ReadLink(const std::string& path, std::string& target) {
    char buffer[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), buffer, sizeof buffer);
    if (length < 0) return errno;
    target.assign(buffer, static_cast<std::size_t>(length));
    return 0;
}

}  // namespace

int ChainOfLinks(const std::string& path, std::vector<std::string>& names) {
    names = {path};
    std::string next;
    for (int i = 0; i <= kMostLinks; ++i) {
        struct stat status;
        const std::string& link = names.back();
        if (lstat(link.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
        if (!S_ISLNK(status.st_mode)) return 0;
        if (const int error = ReadLink(link, next); error != 0) return error;
        const std::size_t name = link.rfind('/') + 1;
        names.push_back(next.starts_with('/') ? next : link.substr(0, name) + next);
    }
    return ELOOP;
}

int FollowLinks(const std::string& path, std::string& target) {
    std::vector<std::string> names;
    const int error = ChainOfLinks(path, names);
    target = names.back();
    return error;
}

}  // namespace Platform
