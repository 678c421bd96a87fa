#include <Platform/StandardStreams.h>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <initializer_list>

namespace Platform {

void PrepareStandardStreams() {
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN);
    // From 0 upwards, for the system hands out the lowest free descriptor.
    // Whoever writes to standard output hears that it is closed.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
            open("/dev/null", descriptor == STDOUT_FILENO ? O_RDONLY : O_RDWR);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

bool IsReaderGone(int error) {
    return error == EPIPE;
}

}  // namespace Platform
