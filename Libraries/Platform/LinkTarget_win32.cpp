#include <Platform/LinkTarget.h>

#include "ErrorNumber_win32.h"
#include "OwnedHandle_win32.h"

#include <cerrno>

namespace Platform {

int FollowLinks(const std::string& path, std::string& target) {
    target = path;
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return 0;
    const OwnedHandle file(
        CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.IsValid()) return LastErrorNumber();
    char name[MAX_PATH];
    const DWORD length = GetFinalPathNameByHandleA(file.Get(), name, sizeof name, 0);
    if (length == 0) return LastErrorNumber();
    if (length >= sizeof name) return ENAMETOOLONG;
    target.assign(name, length);
    return 0;
}

}  // namespace Platform
