#pragma once

#include "ProxyTransport.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>

/// The connection to the proxy process: one request, one reply, and a broken pipe opened again.
class ProxyHelper {
  public:
    enum class Status : std::uint32_t { Good = 0, SpawnFailed = 1, ConnectFailed = 2 };

    static constexpr std::size_t kBufferSize = 4096;

    /// Starts the proxy and connects to it; `status` tells how that went. The proxy outlives this
    /// object on its own.
    ProxyHelper();

    /// Closes the pipe.
    ~ProxyHelper();
    ProxyHelper(const ProxyHelper&) = delete;
    ProxyHelper& operator=(const ProxyHelper&) = delete;

    /// Closes the pipe if it is open, and opens it anew. True when it is open.
    bool Connect();

    /// Exchanges `request` for a reply of at most `reply.size()` bytes. False leaves the reason in
    /// `failure`.
    bool Transact(std::span<const char> request, std::span<char> reply, std::uint32_t* bytesRead);

    Status status = Status::Good;
    std::array<char, kBufferSize> sendBuffer{};
    std::array<char, kBufferSize> receiveBuffer{};
    ProxyFailure failure;

  private:
    bool IsOpen() const { return pipe != nullptr && pipe->IsOpen(); }
    std::uint32_t HandleForLog() const { return IsOpen() ? pipe->Handle() : kNoHandle; }

    static constexpr std::uint32_t kNoHandle = 0xFFFFFFFFu;

    std::unique_ptr<ProxyTransport> pipe;
};
