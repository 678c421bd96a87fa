#pragma once

#include <optional>
#include <string>

namespace Platform {

/// The folder in which programs keep what they remember for this user: on POSIX XDG_DATA_HOME, else
/// .local/share in HOME; on Windows LOCALAPPDATA. It need not exist. Nothing when the environment
/// names none; relative paths do not count.
std::optional<std::string> UserDataFolder();

/// The user's name as the environment gives it, else, on POSIX, the user's number.
std::string UserName();

}  // namespace Platform
