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

/// A list is a version of four bytes, then entries of eight: what the rights are for, the rights,
/// and a user or group. Numbers have their low byte first on every machine.
constexpr std::size_t kFirstEntry = 4;
constexpr std::size_t kEntrySize = 8;
constexpr std::size_t kRights = 2;
constexpr char kGroupOfTheFile = 0x04;
constexpr char kOthers = 0x20;

/// The place of the entry of a kind that occurs once; past the end when there is none.
std::size_t FindEntry(const std::string& list, char kind) {
    std::size_t at = kFirstEntry;
    while (at + kEntrySize <= list.size() && list[at] != kind) at += kEntrySize;
    return at + kEntrySize <= list.size() ? at : list.size();
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
    if (!list.empty()) {
        if (fsetxattr(descriptor, kAttribute, list.data(), list.size(), 0) == 0) return 0;
        // Of users that are not known in this container.
        return errno == EINVAL ? EPERM : errno;
    }
    if (fremovexattr(descriptor, kAttribute) == 0) return 0;
    return SaysThatThereIsNone(errno) ? 0 : errno;
}

std::string ListLimitingGroupToOthers(std::string list) {
    const std::size_t group = FindEntry(list, kGroupOfTheFile);
    const std::size_t others = FindEntry(list, kOthers);
    if (group != list.size() && others != list.size())
        list[group + kRights] &= list[others + kRights];
    return list;
}

}  // namespace Platform
