#include <Platform/MessagePipeServer.h>

#include "OwnedHandle_win32.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace Platform {

namespace {

constexpr DWORD kPipeBuffer = 4096;
// Where nothing is left for a further client, so many milliseconds pass before the next look.
constexpr ULONGLONG kFullHouse = 50;

/// One instance of the pipe. The system writes into it until its operation has ended, also when the
/// operation was cancelled, so it lives until then.
struct Instance {
    enum class Doing { Connecting, Receiving, Sending, Nothing };

    OVERLAPPED operation{};
    OwnedHandle pipe;
    Doing doing = Doing::Nothing;
    std::vector<char> incoming;
    std::string outgoing;
    bool isClient = false;
    bool isDisconnected = false;
};

}  // namespace

class MessagePipeServer::Pipes {
  public:
    explicit Pipes(std::size_t largestMessage) : largest(largestMessage) {}
    Pipes(const Pipes&) = delete;
    Pipes& operator=(const Pipes&) = delete;
    ~Pipes();

    Claimed Claim(const PipeAddress& address, std::uint32_t& error);
    std::optional<Message> WaitForMessage(int milliseconds);
    void Send(Client client, std::span<const char> message);
    void Disconnect(Client client);
    std::size_t CountClients() const;

  private:
    DWORD AddInstance(DWORD flags);
    std::optional<Message> Completed(Client client, DWORD error, DWORD size);
    void Receive(Client client);
    void Settle(Client client, BOOL started, Instance::Doing doing);

    std::size_t largest;
    std::string path;
    OwnedHandle claim;
    OwnedHandle port;
    std::map<Client, Instance> instances;
    bool isListening = false;
    Client lastClient = 0;
};

MessagePipeServer::Pipes::~Pipes() {
    // A client that comes in now learns that it was hung up on, not that the pipe broke.
    for (auto& [client, instance] : instances) DisconnectNamedPipe(instance.pipe.Get());
    // Whichever thread began it.
    for (auto& [client, instance] : instances) CancelIoEx(instance.pipe.Get(), &instance.operation);
    for (auto& [client, instance] : instances) {
        DWORD size = 0;
        if (instance.doing != Instance::Doing::Nothing)
            GetOverlappedResult(instance.pipe.Get(), &instance.operation, &size, TRUE);
    }
}

MessagePipeServer::Claimed MessagePipeServer::Pipes::Claim(const PipeAddress& address,
                                                           std::uint32_t& error) {
    path = "\\\\.\\pipe\\" + address.pipe;
    // Not every system knows a first instance from a further one; all know who made a mutex.
    claim.Reset(CreateMutexA(nullptr, FALSE, (address.pipe + "_server").c_str()));
    if (claim.IsValid() && GetLastError() == ERROR_ALREADY_EXISTS) {
        claim.Reset(nullptr);
        error = 0;
        return Claimed::ByAnother;
    }
    port.Reset(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
    error = port.IsValid() ? AddInstance(FILE_FLAG_FIRST_PIPE_INSTANCE) : GetLastError();
    if (error == 0) return Claimed::ByUs;
    // What a second first instance is told.
    if (error == ERROR_ACCESS_DENIED || error == ERROR_PIPE_BUSY) {
        error = 0;
        return Claimed::ByAnother;
    }
    return Claimed::Failed;
}

/// Opens one more instance, to which the next client connects. 0 or the system's error number.
DWORD MessagePipeServer::Pipes::AddInstance(DWORD flags) {
    const HANDLE pipe = CreateNamedPipeA(
        path.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | flags,
        PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS,
        PIPE_UNLIMITED_INSTANCES, kPipeBuffer, kPipeBuffer, 0, nullptr);
    if (pipe == INVALID_HANDLE_VALUE) return GetLastError();
    const Client client = ++lastClient;
    Instance& instance = instances[client];
    instance.pipe.Reset(pipe);
    instance.incoming.resize(largest);
    if (CreateIoCompletionPort(pipe, port.Get(), static_cast<ULONG_PTR>(client), 0) == nullptr) {
        const DWORD error = GetLastError();
        instances.erase(client);
        return error;
    }
    instance.doing = Instance::Doing::Connecting;
    isListening = true;
    if (!ConnectNamedPipe(pipe, &instance.operation) && GetLastError() != ERROR_IO_PENDING) {
        // The client was quicker, or has even left again; the system will tell no completion.
        instance.isDisconnected = GetLastError() != ERROR_PIPE_CONNECTED;
        instance.operation = {};  // Nothing is under way in it.
        PostQueuedCompletionStatus(port.Get(), 0, static_cast<ULONG_PTR>(client),
                                   &instance.operation);
    }
    return 0;
}

/// Takes note of an operation that was begun; one that failed at once ends the client.
void MessagePipeServer::Pipes::Settle(Client client, BOOL started, Instance::Doing doing) {
    Instance& instance = instances[client];
    const DWORD error = started ? 0 : GetLastError();
    // A message that is too long is told by the completion as well.
    if (error != 0 && error != ERROR_IO_PENDING && error != ERROR_MORE_DATA) {
        instances.erase(client);
        return;
    }
    instance.doing = doing;
}

void MessagePipeServer::Pipes::Receive(Client client) {
    Instance& instance = instances[client];
    instance.operation = {};
    const BOOL started =
        ReadFile(instance.pipe.Get(), instance.incoming.data(),
                 static_cast<DWORD>(instance.incoming.size()), nullptr, &instance.operation);
    Settle(client, started, Instance::Doing::Receiving);
}

std::optional<MessagePipeServer::Message> MessagePipeServer::Pipes::WaitForMessage(
    int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
        const bool isFull = !isListening && AddInstance(0) != 0;
        const ULONGLONG now = GetTickCount64();
        const ULONGLONG left = now < end ? end - now : 0;
        DWORD size = 0;
        ULONG_PTR key = 0;
        OVERLAPPED* operation = nullptr;
        const BOOL worked = GetQueuedCompletionStatus(
            port.Get(), &size, &key, &operation,
            static_cast<DWORD>(isFull ? std::min(left, kFullHouse) : left));
        const DWORD error = worked ? 0 : GetLastError();
        if (operation == nullptr && left == 0) return std::nullopt;
        if (operation == nullptr) continue;
        if (std::optional<Message> message = Completed(key, error, size)) return message;
    }
}

std::optional<MessagePipeServer::Message> MessagePipeServer::Pipes::Completed(Client client,
                                                                              DWORD error,
                                                                              DWORD size) {
    const bool worked = error == 0;
    const auto found = instances.find(client);
    if (found == instances.end()) return std::nullopt;
    Instance& instance = found->second;
    const Instance::Doing done = std::exchange(instance.doing, Instance::Doing::Nothing);
    if (done == Instance::Doing::Connecting) isListening = false;
    if (!worked || instance.isDisconnected) {
        const bool isTooLarge = !worked && !instance.isDisconnected && error == ERROR_MORE_DATA &&
                                done == Instance::Doing::Receiving;
        // A client that sent too much learns that it was hung up on, not that the pipe broke.
        DisconnectNamedPipe(instance.pipe.Get());
        instances.erase(client);
        if (isTooLarge) return Message{client, "", true};
        return std::nullopt;
    }
    if (done == Instance::Doing::Receiving)
        return Message{client, std::string(instance.incoming.data(), size)};
    instance.isClient = true;
    Receive(client);
    return std::nullopt;
}

void MessagePipeServer::Pipes::Send(Client client, std::span<const char> message) {
    const auto found = instances.find(client);
    if (found == instances.end()) return;
    Instance& instance = found->second;
    instance.outgoing.assign(message.begin(), message.end());
    instance.operation = {};
    const BOOL started =
        WriteFile(instance.pipe.Get(), instance.outgoing.data(),
                  static_cast<DWORD>(instance.outgoing.size()), nullptr, &instance.operation);
    Settle(client, started, Instance::Doing::Sending);
}

void MessagePipeServer::Pipes::Disconnect(Client client) {
    const auto found = instances.find(client);
    if (found == instances.end()) return;
    DisconnectNamedPipe(found->second.pipe.Get());
    found->second.isDisconnected = true;
    if (found->second.doing == Instance::Doing::Nothing) instances.erase(found);
}

std::size_t MessagePipeServer::Pipes::CountClients() const {
    std::size_t count = 0;
    for (const auto& [client, instance] : instances)
        if (instance.isClient && !instance.isDisconnected) ++count;
    return count;
}

MessagePipeServer::MessagePipeServer(std::size_t largestMessage)
    : pipes(std::make_unique<Pipes>(largestMessage)) {}

MessagePipeServer::~MessagePipeServer() = default;

MessagePipeServer::Claimed MessagePipeServer::Claim(const PipeAddress& address,
                                                    std::uint32_t& error) {
    error = 0;
    return pipes->Claim(address, error);
}

// The first instance, by which the pipe is claimed, is open already.
std::uint32_t MessagePipeServer::Open() {
    return 0;
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
