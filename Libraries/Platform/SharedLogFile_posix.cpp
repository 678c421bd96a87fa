#include <Platform/SharedLogFile.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Platform {

SharedLogFile::SharedLogFile(std::string logPath, const std::string&) : path(std::move(logPath)) {}

void SharedLogFile::Append(std::string_view text) const {
    const int file = open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0) return;
    while (flock(file, LOCK_EX) != 0 && errno == EINTR) {
    }
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) break;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    close(file);  // and with it the lock
}

void SendToDebugger(const std::string&) {}

}  // namespace Platform
