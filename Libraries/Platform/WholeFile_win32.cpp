#include <Platform/UnfinishedFile.h>
#include <Platform/WholeFile.h>

#include "EndingEvents_win32.h"
#include "ErrorNumber_win32.h"
#include "HandleIo_win32.h"
#include "OwnedHandle_win32.h"

#include <cerrno>

namespace Platform {

struct WholeFile::Target {
    int SaveInPlace(const char* bytes, std::size_t size);

    std::string path;
    UnfinishedFile unfinished;
    int unfinishedError = 0;  // why there is no file beside
    OwnedHandle device;
    bool isThere = false;  // a regular file has the name already
};

namespace {

HANDLE OpenForWriting(const std::string& path) {
    return CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// What says that the folder takes no other file, or not under this name, rather than that
/// something is wrong with the disk.
bool IsFoldersRefusal(int error) {
    return error == EACCES || error == EROFS || error == ENAMETOOLONG;
}

/// Whether nobody may put another file in this one's place, as opposed to a file that somebody uses
/// at the moment, which must stay as it is.
bool IsNeverReplaced(const std::string& path) {
    const OwnedHandle file(CreateFileA(path.c_str(), DELETE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return !file.IsValid() && GetLastError() == ERROR_ACCESS_DENIED;
}

}  // namespace

int WholeFile::Target::SaveInPlace(const char* bytes, std::size_t size) {
    const OwnedHandle file(OpenForWriting(path));
    if (!file.IsValid()) return LastErrorNumber();
    // A disk that has no room for the new content must not cost the old one, nor must a program
    // that has the old one mapped into its memory and so keeps it from getting shorter.
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(size);
    const DeferEvents untilItIsWhole;
    if (!SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) || !SetEndOfFile(file.Get()) ||
        !SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN))
        return LastErrorNumber();
    if (const int error = WriteAll(file.Get(), bytes, size); error != 0) return error;
    return Flush(file.Get());
}

WholeFile::WholeFile() = default;
WholeFile::~WholeFile() = default;

int WholeFile::Open(const std::string& path) {
    auto opening = std::make_unique<Target>();
    opening->path = path;
    OwnedHandle there(OpenForWriting(path));
    if (!there.IsValid()) {
        if (const int error = LastErrorNumber(); error != ENOENT) return error;
        if (const int error = opening->unfinished.CreateBeside(path); error != 0) return error;
    } else if (GetFileType(there.Get()) != FILE_TYPE_DISK) {
        opening->device.Reset(there.Release());
    } else {
        // An open file cannot be replaced on this system.
        there.Reset();
        opening->isThere = true;
        opening->unfinishedError = opening->unfinished.CreateBeside(path);
        if (opening->unfinishedError == EINVAL) return EINVAL;
    }
    target = std::move(opening);
    return 0;
}

int WholeFile::Save(const char* bytes, std::size_t size) {
    if (target->device.IsValid()) return WriteAll(target->device.Get(), bytes, size);
    if (const int error = target->unfinishedError; error != 0)
        return IsFoldersRefusal(error) ? target->SaveInPlace(bytes, size) : error;
    if (const int error = target->unfinished.Write(bytes, size); error != 0) return error;
    const int error = target->unfinished.Publish();
    if (error != EACCES || !target->isThere || !IsNeverReplaced(target->path)) return error;
    return target->SaveInPlace(bytes, size);
}

}  // namespace Platform
