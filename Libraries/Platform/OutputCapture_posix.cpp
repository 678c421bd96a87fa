#include <Platform/OutputCapture.h>

#include <fcntl.h>
#include <poll.h>
#include <stdio_ext.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <future>
#include <iostream>
#include <system_error>
#include <thread>

namespace Platform {

/// What the capture and its thread share. The descriptors are closed when both are done with it, so
/// that nothing is pulled from under a thread that is still waiting for a slow reader.
struct OutputCapture::Copy {
    ~Copy() {
        for (const int descriptor : {log, pipeRead, pipeWrite, savedOutput})
            if (descriptor >= 0) close(descriptor);
    }

    bool Open();
    void Run();

    int log = -1;
    int pipeRead = -1;
    int pipeWrite = -1;
    int savedOutput = -1;
    std::atomic<bool> abandoned = false;
    std::promise<void> ended;
    std::thread thread;
};

namespace {

/// Writes everything, however slow the reader; false when the descriptor takes no more.
bool WriteAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0 && errno == EAGAIN) {
            pollfd waiting{descriptor, POLLOUT, 0};
            poll(&waiting, 1, -1);
            continue;
        }
        if (written <= 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

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
        if (count <= 0) break;
        const std::size_t size = static_cast<std::size_t>(count);
        // Nobody listening any more is no reason to lose the log, nor to leave the pipe to fill up.
        outputTakesMore = outputTakesMore && WriteAll(savedOutput, buffer, size);
        if (abandoned) break;
        WriteAll(log, buffer, size);
    }
    ended.set_value();
}

OutputCapture::OutputCapture() = default;

OutputCapture::~OutputCapture() {
    Stop();
}

OutputCapture::StartResult OutputCapture::Start(const std::string& logFile) {
    const auto starting = std::make_shared<Copy>();
    starting->log =
        open(logFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY, 0666);
    if (starting->log < 0) return StartResult::kLogNotOpened;

    FlushStandardOutput();
    ForgetRefusedOutput();
    if (!starting->Open()) return StartResult::kThreadNotStarted;
    if (dup2(starting->pipeWrite, STDOUT_FILENO) < 0) return StartResult::kThreadNotStarted;
    close(starting->pipeWrite);
    starting->pipeWrite = -1;
    try {
        starting->thread = std::thread([starting] { starting->Run(); });
    } catch (const std::system_error&) {
        dup2(starting->savedOutput, STDOUT_FILENO);
        return StartResult::kThreadNotStarted;
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
        return true;
    }
    stopping->abandoned = true;
    stopping->thread.detach();
    return false;
}

}  // namespace Platform
