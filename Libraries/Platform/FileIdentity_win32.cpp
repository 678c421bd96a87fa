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

/// Where a name that is still free would stand: the nearest folder above it that is there, which
/// several names may lead to, and what is to be made in it.
struct FreePlace {
    BY_HANDLE_FILE_INFORMATION folder;
    std::string below;
};

std::optional<FreePlace> PlaceOf(const std::string& fullPath) {
    // The two separators in front of a server are no folder.
    for (std::size_t length = fullPath.rfind('\\') + 1; length > 2;
         length = fullPath.substr(0, length - 1).rfind('\\') + 1)
        if (const auto folder = Identity(fullPath.substr(0, length)))
            return FreePlace{*folder, fullPath.substr(length)};
    return std::nullopt;
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
    // Letter case is the file system's matter; for names that are still free the system's rule
    // holds.
    if (CompareNames(*fullA, *fullB) == 0) return true;
    const auto placeA = PlaceOf(*fullA);
    const auto placeB = PlaceOf(*fullB);
    return placeA && placeB && IsSame(placeA->folder, placeB->folder) &&
           CompareNames(placeA->below, placeB->below) == 0;
}

bool NamesStandardOutput(const std::string&) {
    return false;
}

}  // namespace Platform
