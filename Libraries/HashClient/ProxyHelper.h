#pragma once

#include "ProxyTransport.h"

#include <HashClient/ProxyMessage.h>

#include <array>
#include <cstdint>
#include <memory>
#include <span>

/// Where a connection or an exchange failed, and the system's error number there; a location of 0
/// is no failure.
struct ProxyFailure {
    std::int32_t location = 0;
    std::uint32_t error = 0;
};

/// The connection to the proxy process: one request, one reply, and a broken pipe opened again.
class ProxyHelper {
  public:
    enum class Status : std::uint32_t { Good = 0, SpawnFailed = 1, ConnectFailed = 2 };

    /// Starts the proxy and connects to it; `status` tells how that went. The proxy outlives this
    /// object on its own.
    ProxyHelper();

    /// Closes the pipe.
    ~ProxyHelper();
    ProxyHelper(const ProxyHelper&) = delete;
    ProxyHelper& operator=(const ProxyHelper&) = delete;

    /// Closes the pipe if it is open, and opens it anew within two seconds. True when it is open;
    /// `failure` tells the last thing that went wrong on the way.
    bool Connect();

    /// Exchanges `request` for a reply of at most `reply.size()` bytes. False leaves the reason in
    /// `failure`.
    bool Transact(std::span<const char> request, std::span<char> reply, std::uint32_t* bytesRead);

    Status status = Status::Good;
    std::array<char, ProxyMessage::kBufferSize> sendBuffer{};
    std::array<char, ProxyMessage::kBufferSize> receiveBuffer{};
    ProxyFailure failure;

  private:
    void OpenWithinTheTime();
    bool OpenOnce();
    bool TimeIsUp(std::uint32_t error);
    std::uint32_t NumberForLog() const;

    std::unique_ptr<ProxyTransport> transport;
    bool isOpen = false;
};
