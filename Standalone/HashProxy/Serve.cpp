#include "Serve.h"

#include <HashClient/ProxyMessage.h>
#include <QelTools/Exception.h>

#include <array>
#include <exception>
#include <span>
#include <string>

namespace {

using Reply = std::array<char, ProxyMessage::kBufferSize>;

/// The size of the reply; 0 when there is none.
std::size_t Answer(Registry& registry, const std::string& request, Reply& reply) {
    ProxyMessage::AddStringRequest strings;
    switch (ProxyMessage::ReadRequest(request, strings)) {
        case ProxyMessage::Request::AddString: {
            const Registry::Answer answer = registry.Add(strings);
            const std::size_t size =
                ProxyMessage::ComposeAddStringReply(reply, answer.hash, answer.other);
            // A client cannot have brought it.
            if (size == 0)
                throw QelTools::Common::Exception(
                    "The hash registry's database: a string is too long for an answer");
            return size;
        }
        case ProxyMessage::Request::Shutdown:
            // A tool that says goodbye has written its files, and they must not outlive the names.
            registry.Flush();
            return ProxyMessage::ComposeShutdownReply(reply);
        case ProxyMessage::Request::Malformed:
            break;
    }
    return 0;
}

}  // namespace

void Serve(Platform::MessagePipeServer& server, Registry& registry, int idleMilliseconds,
           const std::function<void(const std::string&)>& report) {
    for (;;) {
        const auto message = server.WaitForMessage(idleMilliseconds);
        if (!message.has_value()) {
            if (server.CountClients() == 0) return;
            continue;
        }
        if (message->isTooLarge) {
            report("A client was disconnected: its request is longer than " +
                   std::to_string(ProxyMessage::kBufferSize) + " bytes");
            continue;
        }
        Reply reply;
        std::size_t size = 0;
        try {
            size = Answer(registry, message->bytes, reply);
            if (size == 0) report("A client was disconnected: its request is malformed");
        } catch (const std::exception& failure) {
            report(failure.what());
        }
        if (size == 0)
            server.Disconnect(message->from);
        else
            server.Send(message->from, {reply.data(), size});
    }
}
