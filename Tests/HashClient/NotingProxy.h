#pragma once

#include <HashClient/QelHashClient.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "../../Libraries/HashClient/ProxyTransport.h"

/// A proxy that starts, notes what it is asked, and hangs up with error 5.
class NotingProxy : public ProxyTransport {
  public:
    std::uint32_t Spawn(const char*) override { return 0; }
    std::uint32_t CreateTimer() override { return 0; }
    std::uint32_t SetTimer(std::uint32_t) override { return 0; }
    bool TimerHasFired() override { return true; }
    void CloseTimer() override {}
    std::uint32_t OpenPipe() override { return 0; }
    std::uint32_t SetMessageMode() override { return 0; }
    std::uint32_t WaitForPipe(int) override { return 0; }
    void ClosePipe() override {}
    std::uint32_t PipeNumber() override { return 0; }
    Platform::PipeExchange Transact(std::span<const char> request, std::span<char>, std::size_t&,
                                    std::uint32_t& error) override {
        Requests().emplace_back(request.begin(), request.end());
        error = 5;
        return Platform::PipeExchange::Failed;
    }

    /// What was asked, by all proxies since the list was cleared last.
    static std::vector<std::string>& Requests() {
        static std::vector<std::string> requests;
        return requests;
    }
};

/// While it lives, every configured proxy is a noting one.
class NotingProxies {
  public:
    NotingProxies() {
        NotingProxy::Requests().clear();
        SetProxyTransportMaker(
            []() -> std::unique_ptr<ProxyTransport> { return std::make_unique<NotingProxy>(); });
    }
    NotingProxies(const NotingProxies&) = delete;
    NotingProxies& operator=(const NotingProxies&) = delete;
    ~NotingProxies() { SetProxyTransportMaker(nullptr); }
};
