#include <Platform/Folders.h>

#include "OwnedHandle_win32.h"

#include <sys/stat.h>
#include <windows.h>
// Behind the header on which it stands.
#include <shlobj.h>

#include <algorithm>
#include <cstring>

namespace Platform {

namespace {

/// The bytes of the longest full name that a folder can have.
constexpr std::size_t kLongestFolder = 247;

/// The system's file status, which knows no name that ends in a separator.
bool Status(std::string path, struct _stat64& status) {
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/') &&
           path[path.size() - 2] != ':')
        path.pop_back();
    return _stat64(path.c_str(), &status) == 0;
}

}  // namespace

// The file status knows no devices.
bool Exists(const std::string& path) {
    return OwnedHandle(CreateFileA(path.c_str(), 0,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
        .IsValid();
}

bool IsFolder(const std::string& path) {
    struct _stat64 status;
    return Status(path, status) && (status.st_mode & _S_IFMT) == _S_IFDIR;
}

bool IsRegularFile(const std::string& path) {
    struct _stat64 status;
    return Status(path, status) && (status.st_mode & _S_IFMT) == _S_IFREG;
}

bool CreateFolders(const std::string& path) {
    if (IsFolder(path)) return true;
    // The call takes full names with backslashes alone.
    char full[MAX_PATH];
    if (_fullpath(full, path.c_str(), sizeof full) == nullptr) return false;
    // Of a chain that ends beyond the limit the call would make the part that does not.
    if (std::strlen(full) > kLongestFolder) return false;
    SHCreateDirectoryExA(nullptr, full, nullptr);
    // What is there already, made by whomever, is told by the look at the folder in the end.
    return IsFolder(path);
}

}  // namespace Platform
