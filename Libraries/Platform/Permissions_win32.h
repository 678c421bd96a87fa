#pragma once

#include <string>
#include <vector>

namespace Platform {

/// Who may do what with a file, in the system's form; empty where nothing is said about it, as
/// where the file system knows no such thing.
using Permissions = std::vector<char>;

/// Everything for the user of this process, and nothing for anybody else.
Permissions UserAlone();

/// 0 or the system's error number.
[[nodiscard]] int ReadPermissions(const std::string& path, Permissions& permissions);
[[nodiscard]] int SetPermissions(const std::string& path, Permissions& permissions);

}  // namespace Platform
