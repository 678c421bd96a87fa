#include "AccessList_posix.h"

#include <sys/xattr.h>

#include <cerrno>

namespace Platform {

namespace {

constexpr const char* kAttribute = "system.posix_acl_access";

bool SaysThatThereIsNone(int error) {
    return error == ENODATA || error == ENOTSUP || error == ENOSYS;
}

/// `read` is the system's call on a file, given the place and the room for the list.
template <class Read>
int ReadList(Read read, std::string& list) {
    list.clear();
    // The system's own limit for such an attribute.
    std::string room(65536, '\0');
    const ssize_t size = read(room.data(), room.size());
    if (size < 0) return SaysThatThereIsNone(errno) ? 0 : errno;
    list.assign(room, 0, static_cast<std::size_t>(size));
    return 0;
}

}  // namespace

int ReadAccessList(const std::string& path, std::string& list) {
    return ReadList(
        [&](char* to, std::size_t size) { return getxattr(path.c_str(), kAttribute, to, size); },
        list);
}

int ReadAccessList(int descriptor, std::string& list) {
    return ReadList(
        [&](char* to, std::size_t size) { return fgetxattr(descriptor, kAttribute, to, size); },
        list);
}

int GiveAccessList(int descriptor, const std::string& list) {
    if (!list.empty())
        return fsetxattr(descriptor, kAttribute, list.data(), list.size(), 0) == 0 ? 0 : errno;
    if (fremovexattr(descriptor, kAttribute) == 0) return 0;
    return SaysThatThereIsNone(errno) ? 0 : errno;
}

}  // namespace Platform
