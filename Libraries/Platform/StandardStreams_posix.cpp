#include <Platform/StandardStreams.h>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <initializer_list>

namespace Platform {

namespace {

/// Where standard output began; -1 for what has no places.
off_t beginOfOutput = -1;

}  // namespace

void PrepareStandardStreams() {
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN);
    // Ignored, as it may have been handed down, it lets no end of a child be waited for.
    signal(SIGCHLD, SIG_DFL);
    // From 0 upwards, for the system hands out the lowest free descriptor.
    // Whoever writes to standard output hears that it is closed.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
            open("/dev/null", descriptor == STDOUT_FILENO ? O_RDONLY : O_RDWR);
    beginOfOutput = lseek(STDOUT_FILENO, 0, SEEK_CUR);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

bool IsReaderGone(int error) {
    return error == EPIPE;
}

int LateErrorOfStandardOutput() {
    // Of what was not written to nothing is wanted.
    if (lseek(STDOUT_FILENO, 0, SEEK_CUR) == beginOfOutput) return 0;
    const int copy = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    // Without room for a copy the descriptor itself may go, for nothing more is written.
    return close(copy >= 0 ? copy : STDOUT_FILENO) != 0 && errno != EINTR ? errno : 0;
}

}  // namespace Platform
