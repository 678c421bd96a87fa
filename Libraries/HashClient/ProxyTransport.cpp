#include "ProxyTransport.h"

#include <HashClient/ProxyMessage.h>
#include <Platform/Process.h>
#include <Platform/WaitableTimer.h>

namespace {

constexpr char kTimer[] = "ProxyConnectionTimer";

// Longer than any registry takes to answer; a proxy that hangs must not hang a build for ever.
constexpr int kPatienceMilliseconds = 60'000;

class SystemTransport : public ProxyTransport {
  public:
    std::uint32_t Spawn(const char* program) override {
        return static_cast<std::uint32_t>(Platform::StartDetached({program}));
    }

    std::uint32_t CreateTimer() override { return timer.Create(kTimer); }
    std::uint32_t SetTimer(std::uint32_t milliseconds) override { return timer.Set(milliseconds); }
    bool TimerHasFired() override { return timer.HasFired(); }
    void CloseTimer() override { timer.Close(); }

    std::uint32_t OpenPipe() override { return openError = pipe.Open(ProxyMessage::PipeAddress()); }
    std::uint32_t SetMessageMode() override { return pipe.SetMessageMode(); }
    std::uint32_t WaitForPipe(int milliseconds) override {
        return Platform::WaitForPipe(ProxyMessage::PipeAddress(), openError, milliseconds);
    }
    void ClosePipe() override { pipe.Close(); }
    std::uint32_t PipeNumber() override { return pipe.Number(); }
    Platform::PipeExchange Transact(std::span<const char> request, std::span<char> reply,
                                    std::size_t& received, std::uint32_t& error) override {
        const Platform::PipeExchange outcome =
            pipe.Transact(request, reply, kPatienceMilliseconds, received, error);
        // What a late proxy still sends must not be taken for the answer to a later request, and a
        // second wait would only keep the build.
        if (error == Platform::kNoReplyInTime) pipe.Close();
        return outcome;
    }

  private:
    Platform::MessagePipe pipe;
    std::uint32_t openError = 0;
    Platform::WaitableTimer timer;
};

ProxyTransportMaker makerInUse = nullptr;

}  // namespace

std::unique_ptr<ProxyTransport> MakeProxyTransport() {
    if (makerInUse != nullptr) return makerInUse();
    return std::make_unique<SystemTransport>();
}

void SetProxyTransportMaker(ProxyTransportMaker maker) {
    makerInUse = maker;
}
