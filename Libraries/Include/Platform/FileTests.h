#pragma once

#include <string>

/// What a program may do with a file. The tests leave everything as it is: they create, truncate
/// and wake nothing, and none of them blocks. Where the name of a file means a device without
/// saying so (Windows: sub\nul.txt, aux), that is neither readable nor writable.
namespace Platform {

/// True for a regular file, a pipe or a device that opens for reading; a folder is not readable.
bool IsReadable(const std::string& path);

/// False only for what can be read but not opened for writing: a name that is still free counts as
/// writable.
bool IsWritable(const std::string& path);

/// True when the file exists and its permissions grant writing.
bool GrantsWrite(const std::string& path);

/// Adds the owner's read and write permission to a file and leaves the other permissions alone. 0
/// when that worked, else the system's error number; ENOENT when there is no such file.
[[nodiscard]] int MakeOwnerWritable(const std::string& path);

}  // namespace Platform
