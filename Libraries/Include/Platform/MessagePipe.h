#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// Pipes on this machine that keep messages whole: what one end sends as one message, the other
/// receives as one. Errors are the system's own numbers, 0 for none.
namespace Platform {

/// The name of a pipe. On Windows it is the named pipe `pipe`. On POSIX it is a Unix socket of that
/// name in the folder of the user's session (XDG_RUNTIME_DIR, when it is a full path), else in
/// /tmp/`application`-<user number>, a folder that belongs to the user alone: the pipe is not found
/// there (EACCES) when the folder is somebody else's or others may write into it.
struct PipeAddress {
    std::string application;
    std::string pipe;
};

/// What became of an exchange. NotConnected and BadPipe are the two ways in which a pipe turns out
/// to be broken: the other end is gone, or has been gone before anything was sent.
enum class PipeExchange { Done, NotConnected, BadPipe, Failed };

/// The error of an exchange to which no reply came in time.
extern const std::uint32_t kNoReplyInTime;

/// The system's own words for such a number.
std::string PipeErrorText(std::uint32_t error);

/// The client's end of a pipe. Child processes do not inherit it.
class MessagePipe {
  public:
    MessagePipe() = default;
    MessagePipe(const MessagePipe&) = delete;
    MessagePipe& operator=(const MessagePipe&) = delete;
    ~MessagePipe() { Close(); }

    /// Opens the closed pipe, without waiting for a server that is not there or has no room.
    std::uint32_t Open(const PipeAddress& address);
    void Close();
    bool IsOpen() const { return handle != kClosed; }

    /// Makes the open pipe hand out what it receives in messages.
    std::uint32_t SetMessageMode();

    /// Sends `request` as one message and receives one into `reply`, of which `received` bytes are
    /// then filled. Fails when a message lies in the pipe that no request asked for, when the reply
    /// is larger than `reply` (EMSGSIZE on POSIX) and when no reply came within `patience`
    /// milliseconds (kNoReplyInTime). `error` is 0 when the exchange is Done.
    PipeExchange Transact(std::span<const char> request, std::span<char> reply, int patience,
                          std::size_t& received, std::uint32_t& error);

    /// The system's number for the pipe, for a log.
    std::uint32_t Number() const { return static_cast<std::uint32_t>(handle); }

  private:
    static constexpr std::intptr_t kClosed = -1;

    std::intptr_t handle = kClosed;
};

/// Waits until it is worth another try to open a pipe that did not open for the reason `openError`,
/// at most `milliseconds`: until a server puts its pipe there, or, where it had no room, until it
/// may have some. 0 when the wait did not run out, else the reason for which the pipe does not
/// open.
std::uint32_t WaitForPipe(const PipeAddress& address, std::uint32_t openError, int milliseconds);

}  // namespace Platform
