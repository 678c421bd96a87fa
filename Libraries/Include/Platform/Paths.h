#pragma once

#include <optional>
#include <string>

namespace Platform {

/// The working directory of the process; nothing when the system cannot tell it or it is longer
/// than the system's limit on paths.
std::optional<std::string> CurrentDirectory();

/// The canonical absolute form of `path` by its text alone: relative paths count from the working
/// directory, "." and ".." and doubled separators are resolved, links are not followed and nothing
/// needs to exist. A separator at the end stays, for it says that a folder is meant. On POSIX "/"
/// separates and is what comes out. Nothing when the system refuses (a path too long, an empty
/// path, no working directory).
std::optional<std::string> FullPath(const std::string& path);

/// True where a backslash separates folders in names of the system.
bool BackslashSeparates();

}  // namespace Platform
