#include <Platform/ErrorText.h>
#include <Platform/OutputCapture.h>

#include "ErrorNumber_win32.h"
#include "FinalOutput_win32.h"
#include "HandleIo_win32.h"
#include "LogFile_win32.h"
#include "OwnedHandle_win32.h"

#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <utility>

namespace Platform {

/// What the capture and its thread share. The thread works on the system's handles alone: the
/// library's descriptors have locks, and a thread that is ended by force may hold one for good.
struct OutputCapture::Copy {
    ~Copy() {
        for (const int descriptor : {pipeRead, pipeWrite, savedOutput})
            if (descriptor >= 0) _close(descriptor);
    }

    bool Open();
    void Run();
    static DWORD WINAPI RunThread(void* copy);

    LogFile log;  // the thread's until it has ended
    int pipeRead = -1;
    int pipeWrite = -1;
    int savedOutput = -1;
    OwnedHandle thread;
};

namespace {

constexpr int kStandardOutput = 1;
constexpr unsigned int kPipeSize = 1024;
constexpr DWORD kTerminated = 1;
/// A thread that is ended by force may take its time over it: a driver may hold it.
constexpr DWORD kTimeToGo = 1000;

HANDLE HandleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

void FlushStandardOutput() {
    std::cout.flush();
    std::fflush(stdout);
}

/// What a broken standard output refused must not silence what comes behind it.
void ForgetRefusedOutput() {
    std::clearerr(stdout);
    std::cout.clear();
}

/// Whether line feeds become two characters on their way to a descriptor.
int TranslationOf(int descriptor) {
    const int mode = _setmode(descriptor, _O_BINARY);
    _setmode(descriptor, mode);
    return mode;
}

}  // namespace

/// Text that comes through the pipe has got its line ends already, as standard output writes them,
/// so that the old standard output and the log get the same bytes.
bool OutputCapture::Copy::Open() {
    int ends[2];
    if (_pipe(ends, kPipeSize, _O_BINARY | _O_NOINHERIT) != 0) return false;
    pipeRead = ends[0];
    pipeWrite = ends[1];
    savedOutput = _dup(kStandardOutput);
    if (savedOutput < 0) return false;
    SetHandleInformation(HandleOf(savedOutput), HANDLE_FLAG_INHERIT, 0);
    const int translation = TranslationOf(kStandardOutput);
    _setmode(savedOutput, translation);
    _setmode(pipeWrite, translation);
    return true;
}

void OutputCapture::Copy::Run() {
    const HANDLE source = HandleOf(pipeRead);
    const HANDLE output = HandleOf(savedOutput);
    bool outputTakesMore = true;
    char buffer[kPipeSize];
    for (;;) {
        DWORD count = 0;
        if (!ReadFile(source, buffer, sizeof buffer, &count, nullptr)) {
            if (GetLastError() != ERROR_BROKEN_PIPE) log.Fail(LastErrorNumber());
            break;
        }
        // Nobody listening any more is no reason to lose the log, nor to leave the pipe to fill up.
        outputTakesMore = outputTakesMore && WriteAll(output, buffer, count) == 0;
        log.Write(buffer, count);
    }
}

DWORD WINAPI OutputCapture::Copy::RunThread(void* copy) {
    static_cast<Copy*>(copy)->Run();
    return 0;
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
    if (!starting->log.Open(logFile)) return StartResult::kLogNotOpened;

    FlushStandardOutput();
    ForgetRefusedOutput();
    if (!starting->Open()) return NotStarted(errno);
    starting->thread.Reset(CreateThread(nullptr, 0, &Copy::RunThread, starting.get(), 0, nullptr));
    if (!starting->thread.IsValid()) return NotStarted(LastErrorNumber());
    const int redirectionError = _dup2(starting->pipeWrite, kStandardOutput) == 0 ? 0 : errno;
    _close(std::exchange(starting->pipeWrite, -1));
    if (redirectionError != 0) {
        WaitForSingleObject(starting->thread.Get(), INFINITE);
        return NotStarted(redirectionError);
    }
    SetFinalOutput(HandleOf(starting->savedOutput));
    copy = starting;
    return StartResult::kStarted;
}

bool OutputCapture::Stop(std::chrono::milliseconds wait) {
    if (copy == nullptr) return true;
    const std::shared_ptr<Copy> stopping = std::move(copy);
    copy = nullptr;
    FlushStandardOutput();
    const bool hasRefused = std::cout.fail() || std::ferror(stdout) != 0;
    SetFinalOutput(nullptr);
    // Descriptor 1 is the pipe's last writing end: giving it back is what lets the thread come to
    // the pipe's end.
    _dup2(stopping->savedOutput, kStandardOutput);
    const HANDLE thread = stopping->thread.Get();
    if (WaitForSingleObject(thread, static_cast<DWORD>(wait.count())) == WAIT_OBJECT_0) {
        logFault = stopping->log.Close();
        if (logFault.empty() && hasRefused) logFault = "a part of the output never came there";
        return true;
    }
    TerminateThread(thread, kTerminated);
    // What it was given must stay until it has really gone, be it for good.
    if (WaitForSingleObject(thread, kTimeToGo) != WAIT_OBJECT_0)
        static_cast<void>(new std::shared_ptr<Copy>(stopping));
    return false;
}

}  // namespace Platform
