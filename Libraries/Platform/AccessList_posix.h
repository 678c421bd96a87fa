#pragma once

#include <string>

namespace Platform {

/// Who beyond owner, group and others may use a file, in the system's form; empty for a file that
/// has no such list, and where the file system knows none. 0, or the system's error number.
[[nodiscard]] int ReadAccessList(const std::string& path, std::string& list);
[[nodiscard]] int ReadAccessList(int descriptor, std::string& list);

/// Gives a file that list and takes any other away, such as one that it has from its folder.
[[nodiscard]] int GiveAccessList(int descriptor, const std::string& list);

/// The list, or none, with no more rights for the file's group than others have.
std::string ListLimitingGroupToOthers(std::string list);

}  // namespace Platform
