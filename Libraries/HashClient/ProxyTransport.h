#pragma once

#include <cstdint>
#include <memory>
#include <span>

/// Where a connection or an exchange failed, and the system's error number there; a location of 0
/// is no failure.
struct ProxyFailure {
    std::int32_t location = 0;
    std::uint32_t error = 0;
};

/// What became of one exchange with the proxy. A broken pipe may be opened again.
enum class ProxyExchange { Done, BrokenPipe, Failed };

/// A system's way to the proxy process: starts the program, opens a pipe that keeps messages whole,
/// and exchanges one request for one reply.
class ProxyTransport {
  public:
    virtual ~ProxyTransport() = default;

    /// Starts the program without waiting for it; 0 or the system's error number.
    virtual std::uint32_t Spawn(const char* commandLine) = 0;

    /// Opens the closed pipe within a bounded wait. True when it is open; `failure` tells the last
    /// thing that went wrong on the way.
    virtual bool Open(ProxyFailure& failure) = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;

    /// A number for the open pipe, for the log alone.
    virtual std::uint32_t Handle() const = 0;

    /// Sends `request` as one message and receives one into `reply`, of which `bytesRead` bytes are
    /// then filled. `error` is the system's number unless the exchange is Done.
    virtual ProxyExchange Exchange(std::span<const char> request, std::span<char> reply,
                                   std::uint32_t& bytesRead, std::uint32_t& error) = 0;
};

/// The transport of this build, or null when it has none: the proxy then counts as a missing
/// program.
std::unique_ptr<ProxyTransport> MakeProxyTransport();

/// Replaces what MakeProxyTransport gives; null brings the build's own back.
using ProxyTransportMaker = std::unique_ptr<ProxyTransport> (*)();
void SetProxyTransportMaker(ProxyTransportMaker maker);
