#include <Platform/MessagePipeServer.h>
#include <Platform/OwnProgram.h>

#include "RuntimeFolder_posix.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <map>
#include <vector>

namespace Platform {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

// Where no descriptor is left for a further client, so long passes before the next look.
constexpr int kFullHouseMilliseconds = 50;
constexpr mode_t kUserAlone = 0600;

std::uint32_t LastError() {
    return static_cast<std::uint32_t>(errno);
}

/// Tells whoever looks at the lock which process holds it. The line is never empty once it was
/// written: what is left of a longer one goes last.
void WriteProcessId(int descriptor) {
    const std::string text = std::to_string(OwnProcessId()) + "\n";
    if (pwrite(descriptor, text.data(), text.size(), 0) < 0) return;
    [[maybe_unused]] const int cut = ftruncate(descriptor, static_cast<off_t>(text.size()));
}

/// Tells the end of a connection from a message without bytes, which is received alike.
bool HasHungUp(const OwnedDescriptor& client) {
    pollfd state{client.Get(), POLLRDHUP, 0};
    return poll(&state, 1, 0) != 0;
}

}  // namespace

class MessagePipeServer::Pipes {
  public:
    explicit Pipes(std::size_t largestMessage) : buffer(largestMessage) {}
    Pipes(const Pipes&) = delete;
    Pipes& operator=(const Pipes&) = delete;
    ~Pipes() { RemoveName(); }

    Claimed Claim(const PipeAddress& address, std::uint32_t& error);
    std::uint32_t Open();
    std::optional<Message> WaitForMessage(int milliseconds);
    void Send(Client client, std::span<const char> message);
    void Disconnect(Client client) { clients.erase(client); }
    std::size_t CountClients() const { return clients.size(); }

  private:
    void RemoveName();
    void Poll(int milliseconds);
    void Accept();
    std::optional<Message> Receive(Client client);

    std::vector<char> buffer;
    std::string name;
    struct stat ownSocket {};
    bool isPublished = false;
    bool isFull = false;
    OwnedDescriptor folder;
    OwnedDescriptor lock;
    OwnedDescriptor listener;
    std::map<Client, OwnedDescriptor> clients;
    std::vector<Client> ready;  // from the back
    Client lastClient = 0;
};

MessagePipeServer::Claimed MessagePipeServer::Pipes::Claim(const PipeAddress& address,
                                                           std::uint32_t& error) {
    name = address.pipe;
    error = OpenRuntimeFolder(address, true, folder);
    if (error != 0) return Claimed::Failed;
    // The lock goes with its process, however that ends; the socket's name does not.
    lock.Reset(openat(folder.Get(), (name + ".lock").c_str(),
                      O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kUserAlone));
    if (lock.Get() >= 0 && flock(lock.Get(), LOCK_EX | LOCK_NB) == 0) {
        WriteProcessId(lock.Get());
        return Claimed::ByUs;
    }
    if (lock.Get() >= 0 && errno == EWOULDBLOCK) return Claimed::ByAnother;
    error = LastError();
    return Claimed::Failed;
}

// The socket gets its name when it already listens, so nobody is ever turned away by it.
std::uint32_t MessagePipeServer::Pipes::Open() {
    const std::string fresh = name + ".new";
    unlinkat(folder.Get(), fresh.c_str(), 0);
    listener.Reset(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (listener.Get() < 0) return LastError();
    const sockaddr_un place = SocketAddress(folder, fresh);
    if (bind(listener.Get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0 ||
        fchmodat(folder.Get(), fresh.c_str(), kUserAlone, 0) != 0 ||
        listen(listener.Get(), SOMAXCONN) != 0 ||
        fstatat(folder.Get(), fresh.c_str(), &ownSocket, AT_SYMLINK_NOFOLLOW) != 0 ||
        renameat(folder.Get(), fresh.c_str(), folder.Get(), name.c_str()) != 0)
        return LastError();
    isPublished = true;
    return 0;
}

// Somebody may have cleared the folder, and another server may stand there by now.
void MessagePipeServer::Pipes::RemoveName() {
    struct stat status {};
    if (!isPublished || fstatat(folder.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return;
    if (status.st_dev == ownSocket.st_dev && status.st_ino == ownSocket.st_ino)
        unlinkat(folder.Get(), name.c_str(), 0);
}

std::optional<MessagePipeServer::Message> MessagePipeServer::Pipes::WaitForMessage(
    int milliseconds) {
    const Clock::time_point end = Clock::now() + Milliseconds(milliseconds);
    bool hasLooked = false;
    for (;;) {
        while (!ready.empty()) {
            const Client client = ready.back();
            ready.pop_back();
            if (std::optional<Message> message = Receive(client)) return message;
        }
        const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now()).count();
        if (left <= 0 && hasLooked) return std::nullopt;
        Poll(left > 0 ? static_cast<int>(left) : 0);
        hasLooked = true;
    }
}

void MessagePipeServer::Pipes::Poll(int milliseconds) {
    std::vector<pollfd> waits;
    std::vector<Client> owners;
    for (const auto& [client, descriptor] : clients) {
        waits.push_back({descriptor.Get(), POLLIN, 0});
        owners.push_back(client);
    }
    if (!isFull) waits.push_back({listener.Get(), POLLIN, 0});
    const bool shortWait = isFull && milliseconds > kFullHouseMilliseconds;
    isFull = false;
    if (poll(waits.data(), waits.size(), shortWait ? kFullHouseMilliseconds : milliseconds) <= 0)
        return;
    for (std::size_t i = owners.size(); i-- > 0;)
        if (waits[i].revents != 0) ready.push_back(owners[i]);
    if (waits.size() > owners.size() && waits.back().revents != 0) Accept();
}

void MessagePipeServer::Pipes::Accept() {
    for (;;) {
        const int client = accept4(listener.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (client >= 0) {
            clients[++lastClient].Reset(client);
            continue;
        }
        if (errno == EINTR || errno == ECONNABORTED) continue;
        isFull = errno != EAGAIN;
        return;
    }
}

std::optional<MessagePipeServer::Message> MessagePipeServer::Pipes::Receive(Client client) {
    const auto found = clients.find(client);
    if (found == clients.end()) return std::nullopt;
    const ssize_t size =
        recv(found->second.Get(), buffer.data(), buffer.size(), MSG_TRUNC | MSG_DONTWAIT);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) return std::nullopt;
    if (size < 0 || (size == 0 && HasHungUp(found->second))) {
        clients.erase(found);
        return std::nullopt;
    }
    if (static_cast<std::size_t>(size) > buffer.size()) {
        clients.erase(found);
        return Message{client, "", true};
    }
    return Message{client, std::string(buffer.data(), static_cast<std::size_t>(size))};
}

void MessagePipeServer::Pipes::Send(Client client, std::span<const char> message) {
    const auto found = clients.find(client);
    if (found == clients.end()) return;
    const ssize_t sent =
        send(found->second.Get(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0) clients.erase(found);
}

MessagePipeServer::MessagePipeServer(std::size_t largestMessage)
    : pipes(std::make_unique<Pipes>(largestMessage)) {}

MessagePipeServer::~MessagePipeServer() = default;

MessagePipeServer::Claimed MessagePipeServer::Claim(const PipeAddress& address,
                                                    std::uint32_t& error) {
    error = 0;
    return pipes->Claim(address, error);
}

std::uint32_t MessagePipeServer::Open() {
    return pipes->Open();
}

std::optional<MessagePipeServer::Message> MessagePipeServer::WaitForMessage(int milliseconds) {
    return pipes->WaitForMessage(milliseconds);
}

void MessagePipeServer::Send(Client client, std::span<const char> message) {
    pipes->Send(client, message);
}

void MessagePipeServer::Disconnect(Client client) {
    pipes->Disconnect(client);
}

std::size_t MessagePipeServer::CountClients() const {
    return pipes->CountClients();
}

}  // namespace Platform
