#include "Platform/SystemCalls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace {

SystemCalls* watching = nullptr;

bool Fails(int error) {
    if (error != 0) errno = error;
    return error != 0;
}

bool Is(mode_t type, int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && (status.st_mode & S_IFMT) == type;
}

}  // namespace

SystemCalls::SystemCalls() {
    watching = this;
}

SystemCalls::~SystemCalls() {
    watching = nullptr;
}

// The program's own stand in front of the C library's.
extern "C" {

int flock(int descriptor, int operation) noexcept {
    if (watching != nullptr && watching->inFrontOfLocking && Fails(watching->inFrontOfLocking()))
        return -1;
    return static_cast<int>(syscall(SYS_flock, descriptor, operation));
}

int nanosleep(const timespec* pause, timespec* left) {
    if (watching != nullptr && watching->inFrontOfPausing &&
        Fails(watching->inFrontOfPausing(*pause)))
        return -1;
    return static_cast<int>(syscall(SYS_nanosleep, pause, left));
}

int dup2(int from, int to) noexcept {
    if (watching != nullptr && watching->inFrontOfDuplicating &&
        Fails(watching->inFrontOfDuplicating()))
        return -1;
    return static_cast<int>(syscall(SYS_dup3, from, to, 0));
}

int fallocate(int descriptor, int mode, off_t offset, off_t size) {
    if (watching != nullptr && watching->inFrontOfReserving &&
        Fails(watching->inFrontOfReserving()))
        return -1;
    return static_cast<int>(syscall(SYS_fallocate, descriptor, mode, offset, size));
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
    if (watching != nullptr && watching->inFrontOfWriting && Is(S_IFREG, descriptor) &&
        Fails(watching->inFrontOfWriting(lseek(descriptor, 0, SEEK_CUR), size)))
        return -1;
    return syscall(SYS_write, descriptor, bytes, size);
}

int fsync(int descriptor) {
    if (watching != nullptr && watching->inFrontOfFlushing &&
        Fails(watching->inFrontOfFlushing(descriptor)))
        return -1;
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

ssize_t read(int descriptor, void* bytes, size_t size) {
    if (watching != nullptr && watching->inFrontOfReading && Is(S_IFIFO, descriptor) &&
        Fails(watching->inFrontOfReading()))
        return -1;
    return syscall(SYS_read, descriptor, bytes, size);
}

ssize_t pread(int descriptor, void* bytes, size_t size, off_t at) {
    if (watching != nullptr && watching->inFrontOfReadingAt &&
        Fails(watching->inFrontOfReadingAt()))
        return -1;
    return syscall(SYS_pread64, descriptor, bytes, size, at);
}

int ftruncate(int descriptor, off_t size) noexcept {
    if (watching != nullptr && watching->inFrontOfResizing &&
        Fails(watching->inFrontOfResizing(size)))
        return -1;
    return static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
}

int close(int descriptor) {
    const int error = watching != nullptr && watching->inFrontOfClosing && Is(S_IFREG, descriptor)
                          ? watching->inFrontOfClosing(descriptor)
                          : 0;
    const int result = static_cast<int>(syscall(SYS_close, descriptor));
    return Fails(error) ? -1 : result;
}

int linkat(int from, const char* path, int to, const char* newPath, int flags) noexcept {
    if (watching != nullptr && watching->inFrontOfLinking && Fails(watching->inFrontOfLinking()))
        return -1;
    return static_cast<int>(syscall(SYS_linkat, from, path, to, newPath, flags));
}

int rename(const char* from, const char* to) noexcept {
    if (watching != nullptr && watching->inFrontOfRenaming && Fails(watching->inFrontOfRenaming()))
        return -1;
    return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int statx(int folder, const char* __restrict path, int flags, unsigned int wanted,
          struct statx* __restrict status) noexcept {
    const long result = syscall(SYS_statx, folder, path, flags, wanted, status);
    if (result == 0 && watching != nullptr && watching->behindLookingCloser)
        watching->behindLookingCloser(*status);
    return static_cast<int>(result);
}

int stat(const char* __restrict path, struct stat* __restrict status) noexcept {
    const int result = fstatat(AT_FDCWD, path, status, 0);
    if (result == 0 && watching != nullptr && watching->behindLooking)
        watching->behindLooking(path, *status);
    return result;
}

}  // extern "C"
