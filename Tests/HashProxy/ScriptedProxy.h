#pragma once

#include <HashClient/ProxyMessage.h>
#include <Platform/MessagePipeServer.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Support/RunProgram.h"

/// A proxy that answers each request as a test wants; nothing is a client hung up on. It serves the
/// pipe of this process's environment from a thread of its own while the object lives.
class ScriptedProxy {
  public:
    using Answer = std::optional<std::string>;
    using Script = std::function<Answer(const std::string& request)>;

    /// With `closesEachTime` a client is hung up on behind its answer, too.
    explicit ScriptedProxy(Script answers, bool closesEachTime = false)
        : script(std::move(answers)),
          closes(closesEachTime),
          server(2 * ProxyMessage::kBufferSize) {
        std::uint32_t error = 0;
        if (server.Claim(ProxyMessage::PipeAddress(), error) !=
                Platform::MessagePipeServer::Claimed::ByUs ||
            server.Open() != 0)
            throw std::runtime_error("the pipe is not ours");
        thread = std::thread([this] { Serve(); });
    }
    ScriptedProxy(const ScriptedProxy&) = delete;
    ScriptedProxy& operator=(const ScriptedProxy&) = delete;
    ~ScriptedProxy() {
        ends = true;
        thread.join();
    }

    std::vector<std::string> Requests() {
        const std::lock_guard<std::mutex> guard(mutex);
        return requests;
    }

    /// A folder for PATH whose proxy program ends at once and serves nothing.
    static std::string EmptyProgram(const std::string& folder) {
        const std::string programs = folder + "/programs";
        // Called without a command, the document tool tells its use and ends.
        if (std::filesystem::create_directory(programs))
            std::filesystem::copy_file(BuiltProgram("qeli"), programs + "/QelHashProxy.exe");
        return programs;
    }

    /// What a good registry answers.
    static std::string GoodAnswer(const std::string& request, std::uint32_t hash = 0x12345678) {
        std::string reply(ProxyMessage::kBufferSize, '\0');
        ProxyMessage::AddStringRequest strings;
        const bool adds =
            ProxyMessage::ReadRequest(request, strings) == ProxyMessage::Request::AddString;
        reply.resize(adds ? ProxyMessage::ComposeAddStringReply(reply, hash, std::nullopt)
                          : ProxyMessage::ComposeShutdownReply(reply));
        return reply;
    }

  private:
    void Serve() {
        constexpr int kLookMilliseconds = 10;
        while (!ends) {
            const auto message = server.WaitForMessage(kLookMilliseconds);
            if (!message.has_value()) continue;
            {
                const std::lock_guard<std::mutex> guard(mutex);
                requests.push_back(message->bytes);
            }
            const Answer answer = script(message->bytes);
            if (answer.has_value()) server.Send(message->from, *answer);
            if (closes || !answer.has_value()) server.Disconnect(message->from);
        }
    }

    Script script;
    bool closes;
    Platform::MessagePipeServer server;
    std::atomic<bool> ends = false;
    std::mutex mutex;
    std::vector<std::string> requests;
    std::thread thread;
};
