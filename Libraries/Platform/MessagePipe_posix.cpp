#include <Platform/ErrorText.h>
#include <Platform/MessagePipe.h>

#include "RuntimeFolder_posix.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

namespace Platform {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr int kLookMilliseconds = 5;
// Nothing tells that a server took somebody in and has room again.
constexpr int kNoRoomMilliseconds = 75;

std::uint32_t LastError() {
    return static_cast<std::uint32_t>(errno);
}

int MillisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

/// 0 when `descriptor` has something to read within the time, else the system's error number.
std::uint32_t WaitToRead(int descriptor, int milliseconds) {
    const Clock::time_point end = Clock::now() + Milliseconds(milliseconds);
    pollfd wait{descriptor, POLLIN, 0};
    for (;;) {
        const int ready = poll(&wait, 1, MillisecondsUntil(end));
        if (ready > 0) return 0;
        if (ready == 0) return ETIMEDOUT;
        if (errno != EINTR) return LastError();
    }
}

/// A read of no bytes is an empty message or the end, which only the state of the socket tells
/// apart.
bool OtherEndIsGone(int descriptor) {
    pollfd state{descriptor, POLLRDHUP, 0};
    return poll(&state, 1, 0) > 0 && (state.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

PipeExchange Judge(std::uint32_t error) {
    switch (error) {
        case 0:
            return PipeExchange::Done;
        case ECONNRESET:
        case ENOTCONN:
            return PipeExchange::NotConnected;
        case EPIPE:
            return PipeExchange::BadPipe;
        default:
            return PipeExchange::Failed;
    }
}

/// The answer to an earlier question must not be taken for the answer to the next.
std::uint32_t CheckNothingIsUnread(int descriptor) {
    char byte = 0;
    const ssize_t size = recv(descriptor, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    if (size < 0) return errno == EAGAIN ? 0 : LastError();
    return size == 0 && OtherEndIsGone(descriptor) ? EPIPE : EBUSY;
}

std::uint32_t SendWhole(int descriptor, std::span<const char> message) {
    const ssize_t sent =
        send(descriptor, message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0) return LastError();
    return static_cast<std::size_t>(sent) == message.size() ? 0 : EMSGSIZE;
}

std::uint32_t ReceiveWhole(int descriptor, std::span<char> message, std::size_t& received) {
    const ssize_t size = recv(descriptor, message.data(), message.size(), MSG_TRUNC | MSG_DONTWAIT);
    if (size < 0) return LastError();
    if (size == 0 && OtherEndIsGone(descriptor)) return ENOTCONN;
    if (static_cast<std::size_t>(size) > message.size()) return EMSGSIZE;
    received = static_cast<std::size_t>(size);
    return 0;
}

std::uint32_t Exchange(int descriptor, std::span<const char> request, std::span<char> reply,
                       int patience, std::size_t& received) {
    if (descriptor < 0) return EBADF;
    std::uint32_t error = CheckNothingIsUnread(descriptor);
    if (error == 0) error = SendWhole(descriptor, request);
    if (error == 0) error = WaitToRead(descriptor, patience);
    if (error == 0) error = ReceiveWhole(descriptor, reply, received);
    return error;
}

/// What stands under the pipe's name, be it left behind by a server that is gone.
struct PipeFile {
    std::uint32_t error = 0;  ///< 0 when something stands there
    struct stat status {};

    /// Numbers of files are given again; the time tells such two apart.
    bool IsAnother(const PipeFile& earlier) const {
        return earlier.error != 0 || status.st_dev != earlier.status.st_dev ||
               status.st_ino != earlier.status.st_ino ||
               status.st_ctim.tv_sec != earlier.status.st_ctim.tv_sec ||
               status.st_ctim.tv_nsec != earlier.status.st_ctim.tv_nsec;
    }
};

PipeFile LookForPipe(const PipeAddress& address) {
    PipeFile found;
    OwnedDescriptor folder;
    found.error = OpenRuntimeFolder(address, false, folder);
    if (found.error == 0 && fstatat(folder.Get(), address.pipe.c_str(), &found.status, 0) != 0)
        found.error = LastError();
    return found;
}

void Pause(int milliseconds) {
    const timespec time{0, milliseconds * 1'000'000L};
    nanosleep(&time, nullptr);
}

}  // namespace

const std::uint32_t kNoReplyInTime = ETIMEDOUT;

std::string PipeErrorText(std::uint32_t error) {
    return ErrorText(static_cast<int>(error));
}

std::uint32_t MessagePipe::Open(const PipeAddress& address) {
    OwnedDescriptor folder;
    if (const std::uint32_t error = OpenRuntimeFolder(address, false, folder); error != 0)
        return error;
    OwnedDescriptor client;
    client.Reset(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (client.Get() < 0) return LastError();
    const sockaddr_un place = SocketAddress(folder, address.pipe);
    if (connect(client.Get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0)
        return LastError();
    handle = client.Release();
    return 0;
}

void MessagePipe::Close() {
    if (IsOpen()) close(static_cast<int>(handle));
    handle = kClosed;
}

// Such a socket knows nothing but messages; an end that is not open has no mode.
std::uint32_t MessagePipe::SetMessageMode() {
    return IsOpen() ? 0 : EBADF;
}

PipeExchange MessagePipe::Transact(std::span<const char> request, std::span<char> reply,
                                   int patience, std::size_t& received, std::uint32_t& error) {
    received = 0;
    error = Exchange(static_cast<int>(handle), request, reply, patience, received);
    return Judge(error);
}

std::uint32_t WaitForPipe(const PipeAddress& address, std::uint32_t openError, int milliseconds) {
    if (openError == EAGAIN) {
        Pause(std::min(milliseconds, kNoRoomMilliseconds));
        return 0;
    }
    const Clock::time_point end = Clock::now() + Milliseconds(milliseconds);
    const PipeFile before = LookForPipe(address);
    if (openError == ENOENT && before.error == 0) return 0;
    for (;;) {
        Pause(kLookMilliseconds);
        const PipeFile file = LookForPipe(address);
        if (file.error == 0 && file.IsAnother(before)) {
            // A server that is not ours may have its name a little before it listens.
            Pause(kLookMilliseconds);
            return 0;
        }
        if (Clock::now() >= end) return file.error != 0 ? file.error : openError;
    }
}

}  // namespace Platform
