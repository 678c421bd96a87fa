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

}  // namespace

int WholeFile::Target::SaveInPlace(const char* bytes, std::size_t size) {
    const OwnedHandle file(OpenForWriting(path));
    if (!file.IsValid()) return LastErrorNumber();
    // A disk that has no room for the new content must not cost the old one.
    LARGE_INTEGER before;
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(size);
    if (!GetFileSizeEx(file.Get(), &before)) return LastErrorNumber();
    const DeferEvents untilItIsWhole;
    if (end.QuadPart > before.QuadPart) {
        if (!SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN) || !SetEndOfFile(file.Get())) {
            const int error = LastErrorNumber();
            SetFilePointerEx(file.Get(), before, nullptr, FILE_BEGIN);
            SetEndOfFile(file.Get());
            return error;
        }
        SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN);
    }
    if (const int error = WriteAll(file.Get(), bytes, size); error != 0) return error;
    if (!SetEndOfFile(file.Get())) return LastErrorNumber();
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
    }
    target = std::move(opening);
    return 0;
}

int WholeFile::Save(const char* bytes, std::size_t size) {
    if (target->device.IsValid()) return WriteAll(target->device.Get(), bytes, size);
    int error = target->unfinishedError;
    if (error == 0) {
        error = target->unfinished.Write(bytes, size);
        if (error != 0) return error;
        error = target->unfinished.Publish();
    }
    if (!target->isThere || !IsFoldersRefusal(error)) return error;
    return target->SaveInPlace(bytes, size);
}

}  // namespace Platform
