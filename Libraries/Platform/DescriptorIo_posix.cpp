#include "DescriptorIo_posix.h"

#include <poll.h>
#include <sys/file.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace Platform {

namespace {

constexpr int kLockTries = 101;
constexpr timespec kBetweenTries{0, 100'000'000};

bool SaysThatThereAreNoLocks(int error) {
    constexpr int kWords[] = {ENOLCK, EOPNOTSUPP, EINVAL, ENOSYS};
    return std::find(std::begin(kWords), std::end(kWords), error) != std::end(kWords);
}

}  // namespace

ssize_t ReadSome(int descriptor, char* buffer, std::size_t size) {
    ssize_t count;
    do {
        count = read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

int WriteAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0 && errno == EAGAIN) {
            pollfd waiting{descriptor, POLLOUT, 0};
            poll(&waiting, 1, -1);
            continue;
        }
        if (written < 0) return errno;
        if (written == 0) return EIO;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return 0;
}

int LockAlone(int descriptor) {
    // Whoever may read the file may hold its lock for ever, so that nothing waits inside flock.
    for (int tries = 0; tries < kLockTries;) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) return 0;
        if (errno == EINTR) continue;
        if (errno != EWOULDBLOCK) return SaysThatThereAreNoLocks(errno) ? 0 : errno;
        if (++tries < kLockTries) nanosleep(&kBetweenTries, nullptr);
    }
    return EBUSY;
}

int Resize(int descriptor, off_t size) {
    while (ftruncate(descriptor, size) != 0)
        if (errno != EINTR) return errno;
    return 0;
}

int Flush(int descriptor) {
    while (fsync(descriptor) != 0) {
        if (errno == EINTR) continue;
        return errno == EINVAL || errno == EROFS ? 0 : errno;
    }
    return 0;
}

int CloseWritten(int descriptor) {
    // An interrupted close has closed all the same.
    return close(descriptor) == 0 || errno == EINTR ? 0 : errno;
}

}  // namespace Platform
