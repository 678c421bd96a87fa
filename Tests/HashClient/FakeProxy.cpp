#include "HashClient/FakeProxy.h"

#include "ProxyTransport.h"

#include <HashClient/QelHashClient.h>

#include <algorithm>
#include <cerrno>
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
    std::uint32_t Spawn(const char* program) override {
        CurrentScript().programs.emplace_back(program);
        return CurrentScript().spawnError;
    }
    std::uint32_t CreateTimer() override {
        Note("CreateTimer");
        return CurrentScript().createTimerError;
    }
    std::uint32_t SetTimer(std::uint32_t milliseconds) override {
        Note("SetTimer " + std::to_string(milliseconds));
        return CurrentScript().setTimerError;
    }
    bool TimerHasFired() override {
        Note("TimerHasFired");
        return Next(CurrentScript().timerFired, true);
    }
    void CloseTimer() override { Note("CloseTimer"); }
    std::uint32_t OpenPipe() override {
        Note("Open");
        const std::uint32_t error = Next(CurrentScript().openErrors, 0u);
        isOpen = error == 0;
        return error;
    }
    std::uint32_t SetMessageMode() override {
        Note("SetMessageMode");
        return Next(CurrentScript().modeErrors, 0u);
    }
    std::uint32_t WaitForPipe(int milliseconds) override {
        Note("Wait " + std::to_string(milliseconds));
        return Next(CurrentScript().waitErrors, 0u);
    }
    void ClosePipe() override {
        Note("Close");
        isOpen = false;
    }
    std::uint32_t PipeNumber() override { return 0x2A; }
    Platform::PipeExchange Transact(std::span<const char> request, std::span<char> reply,
                                    std::size_t& received, std::uint32_t& error) override {
        if (!isOpen) {
            error = EBADF;
            return Platform::PipeExchange::Failed;
        }
        CurrentScript().requests.emplace_back(request.begin(), request.end());
        const FakeProxyScript::Turn turn =
            Next(CurrentScript().turns, {Platform::PipeExchange::NotConnected, {}, 32});
        std::copy(turn.reply.begin(), turn.reply.end(), reply.begin());
        received = turn.reply.size();
        error = turn.error;
        return turn.exchange;
    }

  private:
    static void Note(std::string call) { CurrentScript().calls.push_back(std::move(call)); }

    bool isOpen = false;
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
