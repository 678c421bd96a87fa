#pragma once

#include <Platform/MessagePipe.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace Platform {

/// The server's end of a pipe, with many clients at once, for one thread. A client may send one
/// message and has to read the answer before it sends the next; one that sends a message larger
/// than `largestMessage`, or does not make room for its answers, is disconnected. The pipe's name
/// goes with the object; clients that are connected then learn that they were hung up on.
class MessagePipeServer {
  public:
    /// A number for a client that is connected; it is never used twice.
    using Client = std::uint64_t;

    struct Message {
        Client from = 0;
        std::string bytes;
        /// Larger than `largestMessage`: nothing of it is kept, and its client is disconnected.
        bool isTooLarge = false;
    };

    enum class Claimed { ByUs, ByAnother, Failed };

    explicit MessagePipeServer(std::size_t largestMessage);
    MessagePipeServer(const MessagePipeServer&) = delete;
    MessagePipeServer& operator=(const MessagePipeServer&) = delete;
    ~MessagePipeServer();

    /// Claims the pipe for this process, once; it stays claimed as long as the object lives. Of all
    /// processes that try, one gets it; what a process that was killed left behind is no hindrance.
    /// `error` is 0 unless the claim Failed.
    Claimed Claim(const PipeAddress& address, std::uint32_t& error);

    /// Opens the claimed pipe for clients; on Windows they can connect from the claim on. 0 or the
    /// system's error number.
    std::uint32_t Open();

    /// The next message of whichever client, empty and too large ones included; nothing when none
    /// came within `milliseconds`. Clients that left are forgotten here.
    std::optional<Message> WaitForMessage(int milliseconds);

    /// Answers a client. One that has left is passed over.
    void Send(Client client, std::span<const char> message);
    void Disconnect(Client client);

    std::size_t CountClients() const;

  private:
    class Pipes;
    std::unique_ptr<Pipes> pipes;
};

}  // namespace Platform
