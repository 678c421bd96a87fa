#include <Platform/Folders.h>

#include "FileName_win32.h"
#include "OwnedHandle_win32.h"

#include <sys/stat.h>
#include <windows.h>
// Behind the header on which it stands.
#include <shlobj.h>

#include <algorithm>
#include <optional>

namespace Platform {

namespace {

/// The bytes of the longest full name that a folder can have.
constexpr std::size_t kLongestFolder = 247;

/// The full name of a folder with backslashes alone and one at its end, in the form in which the
/// system looks for it. Nothing where that is too long.
std::optional<std::string> FullFolder(const std::string& path) {
    char full[MAX_PATH];
    if (_fullpath(full, (path + '\\').c_str(), sizeof full) == nullptr) return std::nullopt;
    return full;
}

}  // namespace

// The file status knows no devices.
bool Exists(const std::string& path) {
    return OwnedHandle(CreateFileA(path.c_str(), 0,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
        .IsValid();
}

// With a separator at its end the name of a root, be it of a drive or of a share, is that of its
// folder and not of the device.
bool IsFolder(const std::string& path) {
    if (path.empty()) return false;
    const bool hasSeparator = path.back() == '\\' || path.back() == '/';
    const DWORD attributes = GetFileAttributesA((hasSeparator ? path : path + '\\').c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsRegularFile(const std::string& path) {
    struct _stat64 status;
    return _stat64(path.c_str(), &status) == 0 && (status.st_mode & _S_IFMT) == _S_IFREG;
}

bool CreateFolders(const std::string& path) {
    if (IsFolder(path)) return true;
    std::optional<std::string> full = FullFolder(path);
    // The system would leave the end of a name out where it makes the folder, and then not find it.
    if (!full || HasShortenedFolderInFull(*full)) return false;
    full->pop_back();
    // Of a chain that ends beyond the limit the call would make the part that does not.
    if (full->size() > kLongestFolder) return false;
    SHCreateDirectoryExA(nullptr, full->c_str(), nullptr);
    // What is there already, made by whomever, is told by the look at the folder in the end.
    return IsFolder(path);
}

}  // namespace Platform
