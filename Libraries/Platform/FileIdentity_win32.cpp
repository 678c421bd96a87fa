#include <Platform/FileIdentity.h>
#include <Platform/Paths.h>

#include "OwnedHandle_win32.h"

#include <optional>

namespace Platform {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// What tells a file or folder from all others; nothing when there is none of this name, or no
/// access to it.
std::optional<BY_HANDLE_FILE_INFORMATION> Identity(const std::string& path) {
    const OwnedHandle file(CreateFileA(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION information;
    if (!file.IsValid() || GetFileType(file.Get()) != FILE_TYPE_DISK ||
        !GetFileInformationByHandle(file.Get(), &information))
        return std::nullopt;
    return information;
}

bool IsDevice(const std::string& path) {
    const OwnedHandle file(
        CreateFileA(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    return file.IsValid() && GetFileType(file.Get()) != FILE_TYPE_DISK;
}

bool IsSame(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) {
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

}  // namespace

bool LeadToOneFile(const std::string& a, const std::string& b) {
    const auto first = Identity(a);
    const auto second = Identity(b);
    if (first && second)
        return (first->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && IsSame(*first, *second);
    if (first || second || IsDevice(a) || IsDevice(b)) return false;

    const std::optional<std::string> fullA = FullPath(a);
    const std::optional<std::string> fullB = FullPath(b);
    if (!fullA || !fullB) return false;
    const std::size_t nameA = fullA->rfind('\\') + 1;
    const std::size_t nameB = fullB->rfind('\\') + 1;
    // Letter case is the file system's matter; for names that are still free the system's rule
    // holds.
    if (CompareNames(fullA->substr(nameA), fullB->substr(nameB)) != 0) return false;
    if (CompareNames(*fullA, *fullB) == 0) return true;
    const auto folderA = Identity(fullA->substr(0, nameA));
    const auto folderB = Identity(fullB->substr(0, nameB));
    return folderA && folderB && IsSame(*folderA, *folderB);
}

bool NamesStandardOutput(const std::string&) {
    return false;
}

}  // namespace Platform
