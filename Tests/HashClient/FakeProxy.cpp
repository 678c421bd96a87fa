#include "HashClient/FakeProxy.h"

#include <HashClient/QelHashClient.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

template <class T>
T Next(std::deque<T>& queue, T otherwise) {
    if (queue.empty()) return otherwise;
    T next = std::move(queue.front());
    queue.pop_front();
    return next;
}

FakeProxyScript& CurrentScript() {
    static FakeProxyScript script;
    return script;
}

class FakeTransport : public ProxyTransport {
  public:
    std::uint32_t Spawn(const char* commandLine) override {
        CurrentScript().commandLines.emplace_back(commandLine);
        return CurrentScript().spawnError;
    }
    bool Open(ProxyFailure& failure) override {
        ++CurrentScript().openCalls;
        open = Next(CurrentScript().opens, true);
        if (!open) failure = CurrentScript().openFailure;
        return open;
    }
    void Close() override {
        ++CurrentScript().closeCalls;
        open = false;
    }
    bool IsOpen() const override { return open; }
    std::uint32_t Handle() const override { return 0x2A; }
    ProxyExchange Exchange(std::span<const char> request, std::span<char> reply,
                           std::uint32_t& bytesRead, std::uint32_t& error) override {
        CurrentScript().requests.emplace_back(request.begin(), request.end());
        const FakeProxyScript::Turn turn =
            Next(CurrentScript().turns, {ProxyExchange::BrokenPipe, {}, 32});
        std::copy(turn.reply.begin(), turn.reply.end(), reply.begin());
        bytesRead = static_cast<std::uint32_t>(turn.reply.size());
        error = turn.error;
        return turn.exchange;
    }

  private:
    bool open = false;
};

}  // namespace

FakeProxyTest::FakeProxyTest() {
    CurrentScript() = {};
    setenv("QEL_HASH_SERVER_NAME", "anything", 1);
    SetProxyTransportMaker(
        []() -> std::unique_ptr<ProxyTransport> { return std::make_unique<FakeTransport>(); });
}

FakeProxyTest::~FakeProxyTest() {
    QelHashClient::Shutdown();
    SetProxyTransportMaker(nullptr);
    unsetenv("QEL_HASH_SERVER_NAME");
}

FakeProxyScript& FakeProxyTest::Script() {
    return CurrentScript();
}
