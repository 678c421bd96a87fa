#pragma once

#include <Platform/MessagePipe.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// The system's calls between the client and its proxy process: the start of the program, the pipe,
/// and the timer that bounds the wait for it. Errors are the system's own numbers, 0 for none.
class ProxyTransport {
  public:
    virtual ~ProxyTransport() = default;

    /// Starts the program without waiting for it.
    virtual std::uint32_t Spawn(const char* program) = 0;

    virtual std::uint32_t CreateTimer() = 0;
    virtual std::uint32_t SetTimer(std::uint32_t milliseconds) = 0;
    virtual bool TimerHasFired() = 0;
    virtual void CloseTimer() = 0;

    virtual std::uint32_t OpenPipe() = 0;
    virtual std::uint32_t SetMessageMode() = 0;
    virtual std::uint32_t WaitForPipe(int milliseconds) = 0;
    virtual void ClosePipe() = 0;

    /// A number for the open pipe, for the log alone.
    virtual std::uint32_t PipeNumber() = 0;

    /// Sends `request` as one message and receives one into `reply`, of which `received` bytes are
    /// then filled.
    virtual Platform::PipeExchange Transact(std::span<const char> request, std::span<char> reply,
                                            std::size_t& received, std::uint32_t& error) = 0;
};

/// The system's own calls, unless SetProxyTransportMaker says otherwise.
std::unique_ptr<ProxyTransport> MakeProxyTransport();

/// Replaces what MakeProxyTransport gives; null brings the system's calls back.
using ProxyTransportMaker = std::unique_ptr<ProxyTransport> (*)();
void SetProxyTransportMaker(ProxyTransportMaker maker);
