#include <Platform/UnfinishedFile.h>
#include <Platform/WholeFile.h>

#include "DescriptorIo_posix.h"
#include "EndingSignals_posix.h"

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

    int OpenKept(const std::string& path);
    int SaveInPlace(const char* bytes, std::size_t size);

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
    constexpr int kRefusals[] = {EACCES, EPERM, EROFS, EBUSY, ENOENT, ENAMETOOLONG};
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

int WholeFile::Target::OpenKept(const std::string& path) {
    inPlace = OpenForWriting(path, 0);
    if (inPlace < 0) return errno;
    isKept = true;
    unfinishedError = unfinished.CreateBeside(path);
    return 0;
}

int WholeFile::Target::SaveInPlace(const char* bytes, std::size_t size) {
    if (!isKept) {
        const int error = WriteAll(inPlace, bytes, size);
        const int closeError = CloseWritten(std::exchange(inPlace, -1));
        return error != 0 ? error : closeError;
    }
    // A disk that has no room for the new content must not cost the old one.
    if (IsOverLimit(size)) return EFBIG;
    if (size > 0 && fallocate(inPlace, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) != 0 &&
        IsDisks(errno))
        return errno;
    const DeferSignals untilItIsWhole;
    int error = WriteAll(inPlace, bytes, size);
    if (error == 0 && ftruncate(inPlace, static_cast<off_t>(size)) != 0) error = errno;
    if (error == 0) error = Flush(inPlace);
    const int closeError = CloseWritten(std::exchange(inPlace, -1));
    return error != 0 ? error : closeError;
}

WholeFile::WholeFile() = default;
WholeFile::~WholeFile() = default;

int WholeFile::Open(const std::string& path) {
    auto opening = std::make_unique<Target>();
    struct stat status;
    int error = 0;
    if (stat(path.c_str(), &status) != 0) {
        error = errno == ENOENT ? opening->unfinished.CreateBeside(path) : errno;
    } else if (S_ISREG(status.st_mode)) {
        error = opening->OpenKept(path);
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
