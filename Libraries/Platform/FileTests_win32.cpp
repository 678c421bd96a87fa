#include <Platform/FileTests.h>

#include "FileName_win32.h"

#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <cerrno>

namespace Platform {

namespace {

constexpr int kWritePermission = 2;

bool Opens(const std::string& path, DWORD access, DWORD sharing) {
    const HANDLE file = CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

}  // namespace

// A folder does not open this way. A device that nobody has named might wait.
bool IsReadable(const std::string& path) {
    return !HidesDevice(path) && Opens(path, GENERIC_READ, FILE_SHARE_READ);
}

bool IsWritable(const std::string& path) {
    if (HidesDevice(path)) {
        errno = EINVAL;
        return false;
    }
    return Opens(path, GENERIC_WRITE, 0) || !IsReadable(path);
}

bool GrantsWrite(const std::string& path) {
    return _access(path.c_str(), kWritePermission) == 0;
}

int MakeOwnerWritable(const std::string& path) {
    return _chmod(path.c_str(), _S_IREAD | _S_IWRITE) == 0 ? 0 : errno;
}

}  // namespace Platform
