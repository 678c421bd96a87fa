#include <Platform/MessagePipeServer.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <list>
#include <memory>
#include <set>
#include <thread>

namespace {

using Platform::MessagePipeServer;
using Platform::PipeAddress;
using Claimed = MessagePipeServer::Claimed;
using Message = std::optional<MessagePipeServer::Message>;

/// The name is the process's own, for all tests of a machine share the names of pipes.
const PipeAddress kAddress{"PipeTest",
                           "PipeServerTest_pipe" + std::to_string(GetCurrentProcessId())};
constexpr std::size_t kLargest = 16;

/// A client that sends and receives by itself, without the exchange of both.
class RawClient {
  public:
    RawClient() = default;
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;
    ~RawClient() { Close(); }

    bool Connect() {
        handle = CreateFileA(("\\\\.\\pipe\\" + kAddress.pipe).c_str(),
                             GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        DWORD mode = PIPE_READMODE_MESSAGE;
        return handle != INVALID_HANDLE_VALUE &&
               SetNamedPipeHandleState(handle, &mode, nullptr, nullptr);
    }
    void Send(const std::string& message) const {
        DWORD size = 0;
        WriteFile(handle, message.data(), static_cast<DWORD>(message.size()), &size, nullptr);
    }
    std::string Receive() const {
        char message[100];
        DWORD size = 0;
        if (!ReadFile(handle, message, sizeof message, &size, nullptr)) return "end";
        return {message, size};
    }
    void Close() {
        if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE handle = INVALID_HANDLE_VALUE;
};

/// A server at its work.
std::unique_ptr<MessagePipeServer> Serving() {
    auto server = std::make_unique<MessagePipeServer>(kLargest);
    std::uint32_t error = 99;
    EXPECT_EQ(server->Claim(kAddress, error), Claimed::ByUs);
    EXPECT_EQ(error, 0u);
    EXPECT_EQ(server->Open(), 0u);
    return server;
}

/// Lets further clients in: one by one they come in while the server waits.
void Connect(RawClient& client, MessagePipeServer& server) {
    for (int i = 0; i < 100 && !client.Connect(); ++i) server.WaitForMessage(10);
}

/// A client that asks, and what the server gets of that.
Message Ask(RawClient& client, MessagePipeServer& server) {
    Connect(client, server);
    client.Send("a");
    return server.WaitForMessage(5000);
}

TEST(MessagePipeServer, MessagesComeFromClientsAndAnswersGoBackToThem) {
    const auto server = Serving();
    RawClient one;
    RawClient two;
    Connect(one, *server);
    Connect(two, *server);
    one.Send(std::string("o\0e", 3));
    const Message first = server->WaitForMessage(5000);
    two.Send("two");
    const Message second = server->WaitForMessage(5000);
    ASSERT_TRUE(first.has_value() && second.has_value());
    EXPECT_EQ(first->bytes, std::string("o\0e", 3));
    EXPECT_EQ(second->bytes, "two");
    EXPECT_NE(first->from, second->from);
    EXPECT_EQ(server->CountClients(), 2u);
    server->Send(second->from, std::string("for two"));
    server->Send(first->from, std::string("for one"));
    EXPECT_EQ(one.Receive(), "for one");
    EXPECT_EQ(two.Receive(), "for two");
}

TEST(MessagePipeServer, AClientSendsAgainBehindItsAnswer) {
    const auto server = Serving();
    RawClient client;
    Connect(client, *server);
    for (const char* text : {"one", "two", "three"}) {
        client.Send(text);
        const Message message = server->WaitForMessage(5000);
        ASSERT_TRUE(message.has_value());
        EXPECT_EQ(message->bytes, text);
        server->Send(message->from, message->bytes);
        EXPECT_EQ(client.Receive(), text);
    }
}

TEST(MessagePipeServer, TheWaitForAMessageEnds) {
    const auto server = Serving();
    EXPECT_FALSE(server->WaitForMessage(0).has_value());
    EXPECT_FALSE(server->WaitForMessage(20).has_value());
}

TEST(MessagePipeServer, ClientsThatLeaveAreForgottenAndTheirAnswersDropped) {
    const auto server = Serving();
    RawClient one;
    const Message message = Ask(one, *server);
    ASSERT_TRUE(message.has_value());
    one.Close();
    server->Send(message->from, std::string("late"));
    EXPECT_FALSE(server->WaitForMessage(20).has_value());
    EXPECT_EQ(server->CountClients(), 0u);
    server->Send(message->from, std::string("later"));
    server->Disconnect(message->from);
}

/// What a client that asks is told.
std::uint32_t ErrorOfAsking(Platform::MessagePipe& client, const std::string& question = "a") {
    char reply[kLargest];
    std::size_t received = 0;
    std::uint32_t error = 0;
    client.Transact(question, reply, 5000, received, error);
    return error;
}

TEST(MessagePipeServer, ADisconnectedClientIsToldSo) {
    const auto server = Serving();
    RawClient one;
    server->Disconnect(Ask(one, *server)->from);
    EXPECT_EQ(one.Receive(), "end");
    EXPECT_EQ(server->CountClients(), 0u);
}

TEST(MessagePipeServer, WhoAsksTooMuchOrInVainIsHungUpOn) {
    const auto server = Serving();
    for (const std::size_t size : {kLargest, kLargest + 1}) {
        Platform::MessagePipe client;
        for (int i = 0; i < 100 && client.Open(kAddress) != 0; ++i) server->WaitForMessage(10);
        ASSERT_EQ(client.SetMessageMode(), 0u);
        std::uint32_t told = 0;
        std::thread question([&] { told = ErrorOfAsking(client, std::string(size, 'a')); });
        const Message message = server->WaitForMessage(5000);
        EXPECT_TRUE(message.has_value() && message->isTooLarge == (size > kLargest));
        if (message.has_value()) server->Disconnect(message->from);
        question.join();
        EXPECT_EQ(told, DWORD{ERROR_PIPE_NOT_CONNECTED}) << size;
    }
}

TEST(MessagePipeServer, AClientThatIsDisconnectedBehindItsAnswerCountsNoMore) {
    const auto server = Serving();
    RawClient client;
    const Message message = Ask(client, *server);
    ASSERT_TRUE(message.has_value());
    server->Send(message->from, std::string("b"));
    server->Disconnect(message->from);
    EXPECT_EQ(server->CountClients(), 0u);
}

TEST(MessagePipeServer, AtItsEndAllClientsAreHungUpOn) {
    auto server = Serving();
    Platform::MessagePipe asking;
    Platform::MessagePipe served;
    Platform::MessagePipe fresh;
    for (Platform::MessagePipe* const client : {&asking, &served, &fresh}) {
        ASSERT_EQ(client->Open(kAddress), 0u);
        ASSERT_EQ(client->SetMessageMode(), 0u);
        if (client != &fresh) server->WaitForMessage(0);
    }
    std::uint32_t toldWhileItAsked = 0;
    std::thread question([&] { toldWhileItAsked = ErrorOfAsking(asking); });
    EXPECT_TRUE(server->WaitForMessage(5000).has_value());
    server.reset();
    question.join();
    EXPECT_EQ(toldWhileItAsked, DWORD{ERROR_PIPE_NOT_CONNECTED});
    EXPECT_EQ(ErrorOfAsking(served), DWORD{ERROR_PIPE_NOT_CONNECTED});
    EXPECT_EQ(ErrorOfAsking(fresh), DWORD{ERROR_PIPE_NOT_CONNECTED});
}

TEST(MessagePipeServer, AMessageThatIsTooLargeEndsItsClientAlone) {
    const auto server = Serving();
    RawClient large;
    RawClient good;
    Connect(large, *server);
    Connect(good, *server);
    large.Send(std::string(kLargest + 1, 'a'));
    Message message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    EXPECT_TRUE(message->isTooLarge);
    good.Send(std::string(kLargest, 'b'));
    message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->bytes, std::string(kLargest, 'b'));
    EXPECT_FALSE(server->WaitForMessage(20).has_value());
    EXPECT_EQ(large.Receive(), "end");
    EXPECT_EQ(server->CountClients(), 1u);
}

TEST(MessagePipeServer, OneOfAllServes) {
    auto server = Serving();
    MessagePipeServer second(kLargest);
    std::uint32_t error = 99;
    EXPECT_EQ(second.Claim(kAddress, error), Claimed::ByAnother);
    EXPECT_EQ(error, 0u);
    server.reset();
    MessagePipeServer third(kLargest);
    EXPECT_EQ(third.Claim(kAddress, error), Claimed::ByUs);
}

TEST(MessagePipeServer, ManyClientsAreServedAtOnce) {
    const auto server = Serving();
    std::list<RawClient> clients(50);
    for (RawClient& client : clients) Connect(client, *server);
    for (const RawClient& client : clients) client.Send("a");
    std::set<MessagePipeServer::Client> seen;
    for (std::size_t i = 0; i < clients.size(); ++i) {
        const Message message = server->WaitForMessage(5000);
        ASSERT_TRUE(message.has_value());
        seen.insert(message->from);
    }
    EXPECT_EQ(seen.size(), clients.size());
    for (const auto client : seen) server->Send(client, std::string("b"));
    for (const RawClient& client : clients) EXPECT_EQ(client.Receive(), "b");
}

}  // namespace
