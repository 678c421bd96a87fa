#include <Platform/UnfinishedFile.h>
#include <Platform/WholeFile.h>

#include "DescriptorIo_posix.h"
#include "EndingSignals_posix.h"
#include "FinalOutput_posix.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace Platform {

struct WholeFile::Target {
    ~Target() {
        if (inPlace >= 0) close(inPlace);
    }

    int OpenKept();
    int Reserve(off_t size);
    int ReserveByGrowing(off_t size);
    int SaveInPlace(const char* bytes, std::size_t size);
    int CheckName() const;

    std::string path;
    UnfinishedFile unfinished;
    int unfinishedError = 0;  // why there is no file beside
    int inPlace = -1;         // the file that is there, open for writing
    bool isKept = false;      // it is a regular file
};

namespace {

int OpenForWriting(const std::string& path, int options) {
    int descriptor;
    do {
        descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | options);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

/// What says that the folder takes no other file, or not under this name, rather than that
/// something is wrong with the disk.
bool IsFoldersRefusal(int error) {
    constexpr int kRefusals[] = {EACCES, EPERM, EROFS, EBUSY, ENAMETOOLONG};
    return std::find(std::begin(kRefusals), std::end(kRefusals), error) != std::end(kRefusals);
}

bool IsOverLimit(std::size_t size) {
    rlimit limit;
    return getrlimit(RLIMIT_FSIZE, &limit) == 0 && size > limit.rlim_cur;
}

bool IsDisks(int error) {
    return error == ENOSPC || error == EDQUOT || error == EFBIG || error == EIO;
}

}  // namespace

int WholeFile::Target::OpenKept() {
    inPlace = OpenForWriting(path, 0);
    if (inPlace < 0) return errno;
    isKept = true;
    unfinishedError = unfinished.CreateBeside(path);
    return 0;
}

/// A disk that has no room for the new content must not cost the old one.
int WholeFile::Target::Reserve(off_t size) {
    if (size == 0) return 0;
    if (IsOverLimit(static_cast<std::size_t>(size))) return EFBIG;
    if (fallocate(inPlace, FALLOC_FL_KEEP_SIZE, 0, size) == 0) return 0;
    return IsDisks(errno) ? errno : ReserveByGrowing(size);
}

/// For systems that cannot reserve: what is written behind the old content needs no more room.
int WholeFile::Target::ReserveByGrowing(off_t size) {
    struct stat status;
    if (fstat(inPlace, &status) != 0) return errno;
    if (status.st_size >= size) return 0;
    if (lseek(inPlace, 0, SEEK_END) < 0) return errno;
    static constexpr char kZeros[65536] = {};
    int error = 0;
    for (off_t at = status.st_size; error == 0 && at < size; at += sizeof kZeros) {
        const off_t missing = size - at;
        error =
            WriteAll(inPlace, kZeros, std::min(sizeof kZeros, static_cast<std::size_t>(missing)));
    }
    // Some find out only now that there is no room.
    if (error == 0) error = Flush(inPlace);
    if (error == 0 && lseek(inPlace, 0, SEEK_SET) < 0) error = errno;
    if (error == 0) return 0;
    const int cutError = Resize(inPlace, status.st_size);
    return cutError != 0 ? cutError : error;
}

/// Whoever has moved the file or its folder away must not be told that the name has the content.
int WholeFile::Target::CheckName() const {
    struct stat opened;
    struct stat named;
    if (fstat(inPlace, &opened) != 0 || stat(path.c_str(), &named) != 0) return errno;
    const bool isSame = opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
    return isSame ? 0 : ENOENT;
}

int WholeFile::Target::SaveInPlace(const char* bytes, std::size_t size) {
    if (!isKept) {
        const int error = WriteAll(inPlace, bytes, size);
        const int closeError = CloseWritten(std::exchange(inPlace, -1));
        return error != 0 ? error : closeError;
    }
    // What this program prints would go over what it writes, at places of its own.
    if (IsPrintedInto(inPlace)) return EBUSY;
    // Another bake must not write in between, nor cut what this one has written.
    if (const int error = LockAlone(inPlace); error != 0) return error;
    const DeferSignals untilItIsWhole;
    if (const int error = CheckName(); error != 0) return error;
    if (const int error = Reserve(static_cast<off_t>(size)); error != 0) return error;
    int error = WriteAll(inPlace, bytes, size);
    if (error == 0) error = Resize(inPlace, static_cast<off_t>(size));
    if (error == 0) error = Flush(inPlace);
    if (error == 0) error = CheckName();
    const int closeError = CloseWritten(std::exchange(inPlace, -1));
    return error != 0 ? error : closeError;
}

WholeFile::WholeFile() = default;
WholeFile::~WholeFile() = default;

int WholeFile::Open(const std::string& path) {
    auto opening = std::make_unique<Target>();
    opening->path = path;
    struct stat status;
    int error = 0;
    if (stat(path.c_str(), &status) != 0) {
        error = errno == ENOENT ? opening->unfinished.CreateBeside(path) : errno;
    } else if (S_ISREG(status.st_mode)) {
        error = opening->OpenKept();
    } else {
        opening->inPlace = OpenForWriting(path, O_TRUNC);
        if (opening->inPlace < 0) error = errno;
    }
    if (error == 0) target = std::move(opening);
    return error;
}

int WholeFile::Save(const char* bytes, std::size_t size) {
    const bool beside = target->inPlace < 0 || target->isKept;
    int error = beside ? target->unfinishedError : EACCES;
    if (beside && error == 0) {
        error = target->unfinished.Write(bytes, size);
        if (error != 0) return error;
        error = target->unfinished.Publish();
    }
    if (target->inPlace < 0 || !IsFoldersRefusal(error)) return error;
    return target->SaveInPlace(bytes, size);
}

}  // namespace Platform
