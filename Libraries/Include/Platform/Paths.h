#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Platform {

/// The working directory of the process; nothing when the system cannot tell it or it is longer
/// than the system's limit on paths.
std::optional<std::string> CurrentDirectory();

/// Makes a folder the working directory of the process; false when the system refuses.
bool EnterFolder(const std::string& path);

/// The canonical absolute form of `path` by its text alone: relative paths count from the working
/// directory, "." and ".." and doubled separators are resolved, links are not followed and nothing
/// needs to exist. A separator at the end stays, for it says that a folder is meant. On POSIX "/"
/// separates and is what comes out. Nothing when the system refuses (a path too long, an empty
/// path, no working directory).
std::optional<std::string> FullPath(const std::string& path);

/// The same for a file that is to be written. Nothing for a name that the system takes for one in
/// another folder as well: Windows leaves one dot at the end of a folder's name out each time it
/// looks at it.
std::optional<std::string> FullOutputPath(const std::string& path);

/// A name of the system as the standard library's path, for what can be said of its text. Its own
/// conversion takes the letters of some systems for others.
std::filesystem::path ToPath(const std::string& name);

/// The name that a path stands for, with the separators that it has.
std::string FromPath(const std::filesystem::path& path);

/// What stands behind the last separator of the system, the whole where there is none.
std::string LastName(const std::string& path);

/// Below 0, 0 or above 0 for the order of two names. It is 0 where the system takes them for one by
/// their text alone: where letter case does not matter, names that differ in that are one.
int CompareNames(const std::string& a, const std::string& b);

/// True where a backslash separates folders in names of the system.
bool BackslashSeparates();

}  // namespace Platform
