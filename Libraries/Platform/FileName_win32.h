#pragma once

#include <string>

namespace Platform {

/// Whether a name has a colon other than its drive's, which may stand behind \\?\ or \\.\: it means
/// a further stream of content.
bool NamesStream(const std::string& path);

/// Whether a name that looks like a file's means a device, as AUX, com1 and sub\nul.txt do. NUL and
/// the console's own names mean what they say, as does what begins with \\.\ itself.
bool HidesDevice(const std::string& path);

/// Whether a name begins with \\?\ or \\.\, with whichever separators.
bool IsDevicePath(const std::string& path);

/// Whether a folder's name in a path ends in a dot or a blank, which the system leaves out in some
/// places and not in others. "." and ".." are no names, and none are left in a name that the system
/// has made a full one; those that stand there come of longer ones.
bool HasShortenedFolder(const std::string& path);
bool HasShortenedFolderInFull(const std::string& fullPath);

}  // namespace Platform
