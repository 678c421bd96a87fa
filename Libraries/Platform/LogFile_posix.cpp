#include "LogFile_posix.h"

#include <Platform/ErrorText.h>

#include "DescriptorIo_posix.h"
#include "FinalOutput_posix.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Platform {

namespace {

constexpr const char* kOtherContent = "something else was written into it";

}  // namespace

LogFile::~LogFile() {
    if (descriptor >= 0) close(descriptor);
}

int LogFile::Open(const std::string& logFile) {
    path = logFile;
    written = {};
    descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666);
    struct stat file;
    if (descriptor < 0 || fstat(descriptor, &file) != 0) return errno;
    if (!S_ISREG(file.st_mode)) return 0;
    // What is printed would stand among the log's lines, and what the file holds be lost.
    if (IsPrintedInto(descriptor)) return EBUSY;
    return Resize(descriptor, 0);
}

void LogFile::Write(const char* bytes, std::size_t size) {
    Fail(WriteAll(descriptor, bytes, size));
    written.Add(bytes, size);
}

void LogFile::Fail(int error) {
    if (firstError == 0) firstError = error;
}

std::string LogFile::LookAtContent() const {
    const int reading = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    // Whoever may only write it has seen its size.
    if (reading < 0) return {};
    ContentDigest found;
    char buffer[65536];
    ssize_t count;
    while ((count = ReadSome(reading, buffer, sizeof buffer)) > 0)
        found.Add(buffer, static_cast<std::size_t>(count));
    const int error = errno;
    close(reading);
    if (count < 0) return ErrorText(error);
    return found == written ? "" : kOtherContent;
}

std::string LogFile::LookAtName() const {
    struct stat opened;
    struct stat named;
    if (fstat(descriptor, &opened) != 0) return ErrorText(errno);
    if (!S_ISREG(opened.st_mode)) return {};
    if (stat(path.c_str(), &named) != 0)
        return errno == ENOENT ? "it was moved or removed" : ErrorText(errno);
    if (named.st_dev != opened.st_dev || named.st_ino != opened.st_ino)
        return "another file has taken its name";
    if (static_cast<std::uint64_t>(named.st_size) != written.GetSize()) return kOtherContent;
    return LookAtContent();
}

std::string LogFile::Close() {
    const std::string fault = LookAtName();
    Fail(CloseWritten(std::exchange(descriptor, -1)));
    return firstError != 0 ? ErrorText(firstError) : fault;
}

}  // namespace Platform
