#include "Platform/SystemCalls.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace {

SystemCalls* watching = nullptr;

bool Fails(int error) {
    if (error != 0) errno = error;
    return error != 0;
}

bool IsRegular(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
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

int fallocate(int descriptor, int mode, off_t offset, off_t size) {
    if (watching != nullptr && watching->inFrontOfReserving &&
        Fails(watching->inFrontOfReserving()))
        return -1;
    return static_cast<int>(syscall(SYS_fallocate, descriptor, mode, offset, size));
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
    if (watching != nullptr && watching->inFrontOfWriting && IsRegular(descriptor) &&
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

int stat(const char* __restrict path, struct stat* __restrict status) noexcept {
    const int result = fstatat(AT_FDCWD, path, status, 0);
    if (result == 0 && watching != nullptr && watching->behindLooking)
        watching->behindLooking(path, *status);
    return result;
}

}  // extern "C"
