#include <Platform/ErrorText.h>
#include <Platform/OutputCapture.h>

#include "DescriptorIo_posix.h"
#include "EndingSignals_posix.h"

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <future>
#include <iostream>
#include <system_error>
#include <thread>
#include <utility>

namespace Platform {

/// What the capture and its thread share. The descriptors are closed when both are done with it, so
/// that nothing is pulled from under a thread that is still waiting for a slow reader.
struct OutputCapture::Copy {
    ~Copy() {
        for (const int descriptor : {log, pipeRead, pipeWrite, savedOutput})
            if (descriptor >= 0) close(descriptor);
    }

    bool Open();
    void StartThread(const std::shared_ptr<Copy>& self);
    void Run();
    void CloseLog();

    int log = -1;
    int logError = 0;            // the first; the thread's until it has ended
    bool isLogReplaced = false;  // its name belongs to another file
    int pipeRead = -1;
    int pipeWrite = -1;
    int savedOutput = -1;
    std::atomic<bool> abandoned = false;
    std::promise<void> ended;
    std::thread thread;
};

namespace {

ssize_t ReadSome(int descriptor, char* buffer, std::size_t size) {
    ssize_t count;
    do {
        count = read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

void FlushStandardOutput() {
    std::cout.flush();
    std::fflush(stdout);
}

/// What a broken standard output refused must neither turn up in the log nor silence what comes
/// behind it.
void ForgetRefusedOutput() {
    __fpurge(stdout);
    std::clearerr(stdout);
    std::cout.clear();
}

}  // namespace

bool OutputCapture::Copy::Open() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return false;
    pipeRead = ends[0];
    pipeWrite = ends[1];
    savedOutput = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    return savedOutput >= 0;
}

void OutputCapture::Copy::Run() {
    bool outputTakesMore = true;
    char buffer[1024];
    for (;;) {
        const ssize_t count = ReadSome(pipeRead, buffer, sizeof buffer);
        if (count < 0) logError = errno;
        if (count <= 0) break;
        const std::size_t size = static_cast<std::size_t>(count);
        // Nobody listening any more is no reason to lose the log, nor to leave the pipe to fill up.
        outputTakesMore = outputTakesMore && WriteAll(savedOutput, buffer, size) == 0;
        if (abandoned) break;
        const int error = WriteAll(log, buffer, size);
        if (logError == 0) logError = error;
    }
    ended.set_value();
}

void OutputCapture::Copy::StartThread(const std::shared_ptr<Copy>& self) {
    // They belong to the main thread.
    const DeferSignals forTheThread;
    thread = std::thread([self] { self->Run(); });
}

void OutputCapture::Copy::CloseLog() {
    struct stat status;
    isLogReplaced = fstat(log, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 0;
    const int error = CloseWritten(std::exchange(log, -1));
    if (logError == 0) logError = error;
}

OutputCapture::OutputCapture() = default;

OutputCapture::~OutputCapture() {
    Stop();
}

OutputCapture::StartResult OutputCapture::NotStarted(int error) {
    startFault = ErrorText(error);
    return StartResult::kThreadNotStarted;
}

OutputCapture::StartResult OutputCapture::Start(const std::string& logFile) {
    const auto starting = std::make_shared<Copy>();
    starting->log =
        open(logFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666);
    if (starting->log < 0) return StartResult::kLogNotOpened;

    FlushStandardOutput();
    ForgetRefusedOutput();
    if (!starting->Open()) return NotStarted(errno);
    try {
        starting->StartThread(starting);
    } catch (const std::system_error& failure) {
        return NotStarted(failure.code().value());
    }
    const int redirectionError = dup2(starting->pipeWrite, STDOUT_FILENO) < 0 ? errno : 0;
    close(std::exchange(starting->pipeWrite, -1));
    if (redirectionError != 0) {
        starting->thread.join();
        return NotStarted(redirectionError);
    }
    copy = starting;
    return StartResult::kStarted;
}

bool OutputCapture::Stop(std::chrono::milliseconds wait) {
    if (copy == nullptr) return true;
    const std::shared_ptr<Copy> stopping = std::move(copy);
    copy = nullptr;
    FlushStandardOutput();
    // Descriptor 1 is the pipe's last writing end: giving it back is what lets the thread come to
    // the pipe's end.
    dup2(stopping->savedOutput, STDOUT_FILENO);
    if (stopping->ended.get_future().wait_for(wait) == std::future_status::ready) {
        stopping->thread.join();
        stopping->CloseLog();
        if (stopping->logError != 0)
            logFault = ErrorText(stopping->logError);
        else if (stopping->isLogReplaced)
            logFault = "another file has taken its name";
        return true;
    }
    stopping->abandoned = true;
    stopping->thread.detach();
    return false;
}

}  // namespace Platform
