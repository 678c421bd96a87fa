#pragma once

#include <string>

namespace Platform {

/// True when the path leads to anything at all; links are followed.
bool Exists(const std::string& path);

/// True when the path leads to a folder; links are followed.
bool IsFolder(const std::string& path);

/// True when the path leads to a regular file; links are followed.
bool IsRegularFile(const std::string& path);

/// Creates a folder with all of its missing parents, with the permissions that the user's mask
/// leaves. A folder that is there already, or that somebody else makes in the meantime, is fine.
/// False when the folder is not there in the end.
[[nodiscard]] bool CreateFolders(const std::string& path);

}  // namespace Platform
