#pragma once

#include <HashClient/ProxyMessage.h>
#include <HashClient/QelHashClient.h>
#include <Platform/MessagePipe.h>
#include <Platform/Process.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "HashProxy/ProxyFolder.h"

/// The program as the tools start it, in a registry of its own.
class RunProxy : public testing::Test {
  protected:
    ~RunProxy() override { QelHashClient::Shutdown(); }

    static void Start() { ASSERT_EQ(Platform::StartDetached({"QelHashProxy.exe"}), 0); }

    /// A connection to a proxy that serves or soon will.
    static std::unique_ptr<Platform::MessagePipe> Connected() {
        auto pipe = std::make_unique<Platform::MessagePipe>();
        EXPECT_TRUE(Eventually([&] { return pipe->Open(ProxyMessage::PipeAddress()) == 0; }));
        EXPECT_EQ(pipe->SetMessageMode(), 0u);
        return pipe;
    }

    /// The reply to `request`; "gone" when the proxy hung up.
    static std::string Ask(Platform::MessagePipe& pipe, const std::string& request) {
        std::string reply(ProxyMessage::kBufferSize, 'x');
        std::size_t received = 0;
        std::uint32_t error = 0;
        const Platform::PipeExchange exchange =
            pipe.Transact(request, reply, 30'000, received, error);
        if (exchange == Platform::PipeExchange::Failed) return "failed " + std::to_string(error);
        return exchange == Platform::PipeExchange::Done ? reply.substr(0, received) : "gone";
    }

    /// Runs the program to its end. Gives what it prints and, behind a blank, its status.
    std::string Run(const std::map<std::string, std::string>& variables,
                    const std::vector<std::string>& arguments = {}) const {
        const ProgramResult run =
            RunProgram({"QelHashProxy.exe", arguments, folder.Path(), variables, ""});
        return run.output + run.errors + " " + std::to_string(run.status) + "\n";
    }

    QelHashResult Add(const std::string& string, const char* category = "joint") {
        return QelHashClient::AddString(category, string.c_str(), hash, other.data(),
                                        static_cast<std::int32_t>(other.size()));
    }

    ProxyFolder folder;
    ProxyEnvironment environment{folder};
    std::uint32_t hash = 0;
    std::array<char, 256> other{};
};

inline const std::string kGoodbye("\2\0\0\0\x15\0\0\0\4\0\0\0shutdown\0", 21);
