#pragma once

#include <sys/types.h>
#include <sys/xattr.h>

#include <cstddef>
#include <cstdint>
#include <string>

/// Access lists of files in the system's form, for tests.

inline constexpr const char* kAccessList = "system.posix_acl_access";
/// Of a folder.
inline constexpr const char* kAccessListOfNewFiles = "system.posix_acl_default";

/// The owner and a certain user read and write, the group and others as told.
inline std::string AccessListForOneUser(int group = 0, int others = 0) {
    std::string list("\2\0\0\0", 4);
    const auto add = [&list](int kind, int rights, std::uint32_t user) {
        for (const int number : {kind, rights}) list += {static_cast<char>(number), '\0'};
        for (int i = 0; i < 4; ++i) list += static_cast<char>(user >> 8 * i);
    };
    constexpr std::uint32_t kNobodyCertain = 0xFFFFFFFF;
    add(0x01, 6, kNobodyCertain);  // the owner
    add(0x02, 6, 12345);
    add(0x04, group, kNobodyCertain);
    add(0x10, 6, kNobodyCertain);  // the most that the two in front may have
    add(0x20, others, kNobodyCertain);
    return list;
}

/// False where there are no such lists.
inline bool SetAccessList(const std::string& path, const std::string& list,
                          const char* which = kAccessList) {
    return setxattr(path.c_str(), which, list.data(), list.size(), 0) == 0;
}

inline void TakeAccessList(const std::string& path) {
    removexattr(path.c_str(), kAccessList);
}

/// Empty for a file that has none.
inline std::string AccessListOf(const std::string& path) {
    std::string list(1024, '\0');
    const ssize_t size = getxattr(path.c_str(), kAccessList, list.data(), list.size());
    return list.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size));
}
