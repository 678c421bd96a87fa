#include <Platform/MessagePipe.h>

#include "OwnedHandle_win32.h"

#include <windows.h>

#include <algorithm>

namespace Platform {

namespace {

/// Milliseconds between two looks for a pipe that is missing.
constexpr DWORD kPauseBetweenLooks = 10;

HANDLE PipeHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

std::string PipePath(const PipeAddress& address) {
    return "\\\\.\\pipe\\" + address.pipe;
}

PipeExchange Judge(DWORD error) {
    switch (error) {
        case ERROR_PIPE_NOT_CONNECTED:
            return PipeExchange::NotConnected;
        case ERROR_BAD_PIPE:
            return PipeExchange::BadPipe;
        default:
            return PipeExchange::Failed;
    }
}

/// Waits for the end of what was begun, at most `patience` milliseconds. The system may write into
/// its buffers until it has ended, also when it is cancelled.
DWORD Await(HANDLE pipe, OVERLAPPED& operation, int patience, DWORD& count) {
    const bool isLate =
        WaitForSingleObject(operation.hEvent, static_cast<DWORD>(patience)) != WAIT_OBJECT_0;
    if (isLate) CancelIoEx(pipe, &operation);
    if (GetOverlappedResult(pipe, &operation, &count, TRUE)) return 0;
    const DWORD error = GetLastError();
    return isLate && error == ERROR_OPERATION_ABORTED ? kNoReplyInTime : error;
}

}  // namespace

const std::uint32_t kNoReplyInTime = ERROR_SEM_TIMEOUT;

std::string PipeErrorText(std::uint32_t error) {
    char text[512];
    // English, as are the words around it, where the system has any.
    for (const DWORD language : {MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), 0}) {
        DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                                          FORMAT_MESSAGE_MAX_WIDTH_MASK,
                                      nullptr, error, language, text, sizeof text, nullptr);
        while (length > 0 && (text[length - 1] == ' ' || text[length - 1] == '.')) --length;
        if (length > 0) return {text, length};
    }
    return "Unknown error " + std::to_string(error);
}

std::uint32_t MessagePipe::Open(const PipeAddress& address) {
    const HANDLE opened =
        CreateFileA(PipePath(address).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                    nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return GetLastError();
    handle = reinterpret_cast<std::intptr_t>(opened);
    return 0;
}

void MessagePipe::Close() {
    if (IsOpen()) CloseHandle(PipeHandle(handle));
    handle = kClosed;
}

std::uint32_t MessagePipe::SetMessageMode() {
    DWORD mode = PIPE_READMODE_MESSAGE;
    return SetNamedPipeHandleState(PipeHandle(handle), &mode, nullptr, nullptr) ? 0
                                                                                : GetLastError();
}

PipeExchange MessagePipe::Transact(std::span<const char> request, std::span<char> reply,
                                   int patience, std::size_t& received, std::uint32_t& error) {
    received = 0;
    const OwnedHandle done(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    OVERLAPPED operation{};
    operation.hEvent = done.Get();
    DWORD count = 0;
    const bool isDone = TransactNamedPipe(PipeHandle(handle), const_cast<char*>(request.data()),
                                          static_cast<DWORD>(request.size()), reply.data(),
                                          static_cast<DWORD>(reply.size()), &count, &operation);
    error = isDone ? 0 : GetLastError();
    if (error == ERROR_IO_PENDING) error = Await(PipeHandle(handle), operation, patience, count);
    if (error != 0) return Judge(error);
    received = count;
    return PipeExchange::Done;
}

std::uint32_t WaitForPipe(const PipeAddress& address, std::uint32_t openError, int milliseconds) {
    // A pipe that is somebody else's is always there, and the next try fails like the last one.
    if (openError != ERROR_FILE_NOT_FOUND && openError != ERROR_PIPE_BUSY)
        Sleep(std::min(static_cast<DWORD>(milliseconds), kPauseBetweenLooks));
    const std::string path = PipePath(address);
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
        const ULONGLONG now = GetTickCount64();
        const DWORD left = now < end ? static_cast<DWORD>(end - now) : 0;
        // 0 would be the wait that the server has set.
        if (WaitNamedPipeA(path.c_str(), std::max<DWORD>(left, 1))) return 0;
        const DWORD error = GetLastError();
        // The system waits for room in a pipe, and not at all for a pipe that is still missing.
        if (error != ERROR_FILE_NOT_FOUND || left == 0) return error;
        Sleep(std::min(left, kPauseBetweenLooks));
    }
}

}  // namespace Platform
