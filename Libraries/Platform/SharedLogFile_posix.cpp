#include <Platform/SharedLogFile.h>

#include "DescriptorIo_posix.h"

#include <fcntl.h>
#include <sys/file.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Platform {

SharedLogFile::SharedLogFile(std::string logPath, const std::string&) : path(std::move(logPath)) {}

void SharedLogFile::WaitForTurn(int descriptor) const {
    constexpr timespec kBetweenTries{0, 1'000'000};
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR) &&
           triesLeft > 0) {
        --triesLeft;
        nanosleep(&kBetweenTries, nullptr);
    }
}

void SharedLogFile::Append(std::string_view text) const {
    const int file = open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0) return;
    WaitForTurn(file);
    WriteAll(file, text.data(), text.size());
    close(file);  // and with it the lock
}

void SendToDebugger(const std::string&) {}

}  // namespace Platform
