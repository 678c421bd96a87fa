#include "RunProxy.h"

#include "Serve.h"
#include "Settings.h"

#include <HashClient/ProxyLog.h>
#include <HashClient/ProxyMessage.h>
#include <Platform/Clock.h>
#include <Platform/MessagePipe.h>
#include <Platform/MessagePipeServer.h>
#include <Platform/Paths.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <iostream>
#include <thread>

namespace {

constexpr int kGood = 0;
constexpr int kFailed = 1;
constexpr std::uint32_t kStartMilliseconds = 10'000;
constexpr int kFirstPauseMilliseconds = 10;
constexpr int kLongestPauseMilliseconds = 1000;
constexpr int kAnswerMilliseconds = 5000;

// The tool that started this process shows neither stream; the debug log shows what is wrong.
void Report(const std::string& text) {
    std::cerr << "QelHashProxy: " << text << std::endl;
    ProxyLog("%s\n\n", text.c_str());
}

int ReportPipe(std::uint32_t error) {
    Report("The pipe cannot be opened: " + Platform::PipeErrorText(error));
    return kFailed;
}

/// True when another process answers a goodbye. It counts its idle time anew from then on, so the
/// tool that started this process finds it.
bool AnotherServes() {
    Platform::MessagePipe pipe;
    if (pipe.Open(ProxyMessage::PipeAddress()) != 0 || pipe.SetMessageMode() != 0) return false;
    std::array<char, ProxyMessage::kBufferSize> buffer;
    const std::size_t size = ProxyMessage::ComposeShutdown(buffer);
    std::array<char, ProxyMessage::kBufferSize> reply;
    std::size_t received = 0;
    std::uint32_t error = 0;
    return pipe.Transact({buffer.data(), size}, reply, kAnswerMilliseconds, received, error) ==
               Platform::PipeExchange::Done &&
           ProxyMessage::ReplyId({reply.data(), received}) == ProxyMessage::kShutdownReply;
}

// The claim outlives the registry, so that no other process opens the database while it is closed.
int ServeRegistry(Platform::MessagePipeServer& server) {
    const Settings settings = ReadSettings();
    Registry registry(settings.databaseFile);
    // A process that stands in a folder keeps others from removing it.
    Platform::EnterFolder(
        Platform::FromPath(Platform::ToPath(settings.databaseFile).parent_path()));
    if (const std::uint32_t error = server.Open(); error != 0) return ReportPipe(error);
    Serve(server, registry, settings.idleMilliseconds, Report);
    return kGood;
}

int ServeOrStepAside() {
    const std::uint32_t start = Platform::ClockMilliseconds();
    int pause = kFirstPauseMilliseconds;
    do {
        std::uint32_t error = 0;
        Platform::MessagePipeServer server(ProxyMessage::kBufferSize);
        switch (server.Claim(ProxyMessage::PipeAddress(), error)) {
            case Platform::MessagePipeServer::Claimed::ByUs:
                return ServeRegistry(server);
            case Platform::MessagePipeServer::Claimed::Failed:
                return ReportPipe(error);
            case Platform::MessagePipeServer::Claimed::ByAnother:
                break;
        }
        if (AnotherServes()) return kGood;
        // It is about to begin or to end; whichever, the next round will tell.
        std::this_thread::sleep_for(std::chrono::milliseconds(pause));
        pause = std::min(2 * pause, kLongestPauseMilliseconds);
    } while (Platform::ClockMilliseconds() - start < kStartMilliseconds);
    Report("Another process holds the pipe and does not answer");
    return kFailed;
}

}  // namespace

int RunProxy() {
    // The log's name may count from the folder that this process leaves.
    PrepareProxyLog();
    try {
        return ServeOrStepAside();
    } catch (const std::exception& failure) {
        Report(failure.what());
        return kFailed;
    }
}
