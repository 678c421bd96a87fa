#include "DescriptorIo_posix.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace Platform {

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
