#include <Platform/ErrorText.h>
#include <Platform/OutputCapture.h>

#include "DescriptorIo_posix.h"
#include "EndingSignals_posix.h"
#include "FinalOutput_posix.h"
#include "LogFile_posix.h"
#include "Thread_posix.h"

#include <fcntl.h>
#include <stdio_ext.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <future>
#include <iostream>
#include <utility>

namespace Platform {

namespace {

/// The thread that copies keeps little.
constexpr std::size_t kStackBytes = 256u << 10;

}  // namespace

/// What the capture and its thread share. The descriptors are closed when both are done with it, so
/// that nothing is pulled from under a thread that is still waiting for a slow reader.
struct OutputCapture::Copy {
    ~Copy() {
        for (const int descriptor : {pipeRead, pipeWrite, savedOutput})
            if (descriptor >= 0) close(descriptor);
    }

    bool Open();
    int StartThread(const std::shared_ptr<Copy>& self);
    void Run();

    LogFile log;  // the thread's until it has ended
    int pipeRead = -1;
    int pipeWrite = -1;
    int savedOutput = -1;
    std::atomic<bool> abandoned = false;
    std::promise<void> ended;
    Thread thread;
};

namespace {

void FlushStandardOutput() {
    std::cout.flush();
    std::fflush(stdout);
}

/// Descriptor 1 is the pipe's last writing end: giving it back is what lets the thread come to the
/// pipe's end.
void GiveBackOutput(int saved) {
    if (dup2(saved, STDOUT_FILENO) >= 0) return;
    // The system hands out the lowest free descriptor.
    close(STDOUT_FILENO);
    static_cast<void>(fcntl(saved, F_DUPFD, STDOUT_FILENO));
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
        if (count < 0) log.Fail(errno);
        if (count <= 0) break;
        const std::size_t size = static_cast<std::size_t>(count);
        // Nobody listening any more is no reason to lose the log, nor to leave the pipe to fill up.
        outputTakesMore = outputTakesMore && WriteAll(savedOutput, buffer, size) == 0;
        if (abandoned) break;
        log.Write(buffer, size);
    }
    ended.set_value();
}

int OutputCapture::Copy::StartThread(const std::shared_ptr<Copy>& self) {
    // They belong to the main thread.
    const DeferSignals forTheThread;
    return thread.Start(kStackBytes, [self] { self->Run(); });
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
    if (starting->log.Open(logFile) != 0) return StartResult::kLogNotOpened;

    FlushStandardOutput();
    ForgetRefusedOutput();
    if (!starting->Open()) return NotStarted(errno);
    const int threadError = starting->StartThread(starting);
    if (threadError != 0) return NotStarted(threadError);
    const int redirectionError = dup2(starting->pipeWrite, STDOUT_FILENO) < 0 ? errno : 0;
    close(std::exchange(starting->pipeWrite, -1));
    if (redirectionError != 0) {
        starting->thread.Join();
        return NotStarted(redirectionError);
    }
    SetFinalOutput(starting->savedOutput);
    copy = starting;
    return StartResult::kStarted;
}

bool OutputCapture::Stop(std::chrono::milliseconds wait) {
    if (copy == nullptr) return true;
    const std::shared_ptr<Copy> stopping = std::move(copy);
    copy = nullptr;
    FlushStandardOutput();
    const bool hasRefused = std::cout.fail() || std::ferror(stdout) != 0;
    SetFinalOutput(STDOUT_FILENO);
    GiveBackOutput(stopping->savedOutput);
    if (stopping->ended.get_future().wait_for(wait) == std::future_status::ready) {
        stopping->thread.Join();
        logFault = stopping->log.Close();
        if (logFault.empty() && hasRefused) logFault = "a part of the output never came there";
        return true;
    }
    stopping->abandoned = true;
    stopping->thread.Detach();
    return false;
}

}  // namespace Platform
