#include <Platform/MessagePipe.h>

#include <windows.h>

namespace Platform {

namespace {

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

}  // namespace

std::uint32_t MessagePipe::Open(const PipeAddress& address) {
    const HANDLE opened = CreateFileA(PipePath(address).c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
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

// The system knows no limit for such an exchange: it lasts as long as the pipe.
PipeExchange MessagePipe::Transact(std::span<const char> request, std::span<char> reply, int,
                                   std::size_t& received, std::uint32_t& error) {
    received = 0;
    error = 0;
    DWORD count = 0;
    if (TransactNamedPipe(PipeHandle(handle), const_cast<char*>(request.data()),
                          static_cast<DWORD>(request.size()), reply.data(),
                          static_cast<DWORD>(reply.size()), &count, nullptr)) {
        received = count;
        return PipeExchange::Done;
    }
    error = GetLastError();
    return Judge(error);
}

std::uint32_t WaitForPipe(const PipeAddress& address, std::uint32_t, int milliseconds) {
    return WaitNamedPipeA(PipePath(address).c_str(), static_cast<DWORD>(milliseconds))
               ? 0
               : GetLastError();
}

}  // namespace Platform
