#include <Platform/MessagePipeServer.h>

#include "Platform/FewDescriptors.h"
#include "Platform/RawSocket.h"
#include "Platform/ScopedEnvironment.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <list>
#include <memory>
#include <set>
#include <thread>

namespace {

using Platform::MessagePipeServer;
using Platform::PipeAddress;
using Claimed = MessagePipeServer::Claimed;
using Message = std::optional<MessagePipeServer::Message>;

// Tests run side by side, and /tmp is shared.
const PipeAddress kAddress{"PipeTest" + std::to_string(getpid()), "PipeTest_pipe"};
constexpr std::size_t kLargest = 16;

class MessagePipeServerTest : public testing::Test {
  protected:
    std::string SocketPath() const { return folder.Path(kAddress.pipe); }

    /// A server at its work.
    std::unique_ptr<MessagePipeServer> Serving() {
        auto server = std::make_unique<MessagePipeServer>(kLargest);
        std::uint32_t error = 99;
        EXPECT_EQ(server->Claim(kAddress, error), Claimed::ByUs);
        EXPECT_EQ(error, 0u);
        EXPECT_EQ(server->Open(), 0u);
        return server;
    }

    TemporaryFolder folder;
    ScopedEnvironment session{"XDG_RUNTIME_DIR", folder.Path()};
};

TEST_F(MessagePipeServerTest, MessagesComeFromClientsAndAnswersGoBackToThem) {
    const auto server = Serving();
    const RawSocket one;
    const RawSocket two;
    ASSERT_TRUE(one.Connect(SocketPath()));
    ASSERT_TRUE(two.Connect(SocketPath()));
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

TEST_F(MessagePipeServerTest, TheWaitForAMessageEnds) {
    const auto server = Serving();
    EXPECT_FALSE(server->WaitForMessage(0).has_value());
    const RawSocket early;
    ASSERT_TRUE(early.Connect(SocketPath()));
    early.Send("a");
    EXPECT_FALSE(server->WaitForMessage(0).has_value());  // lets the client in
    EXPECT_TRUE(server->WaitForMessage(0).has_value());
    EXPECT_FALSE(server->WaitForMessage(20).has_value());
}

TEST_F(MessagePipeServerTest, ClientsThatLeaveAreForgottenAndTheirAnswersDropped) {
    const auto server = Serving();
    RawSocket one;
    ASSERT_TRUE(one.Connect(SocketPath()));
    one.Send("a");
    const Message message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    one.Close();
    server->Send(message->from, std::string("late"));
    EXPECT_FALSE(server->WaitForMessage(1).has_value());
    EXPECT_EQ(server->CountClients(), 0u);
    server->Send(message->from, std::string("later"));
    server->Disconnect(message->from);
}

TEST_F(MessagePipeServerTest, ADisconnectedClientIsToldSo) {
    const auto server = Serving();
    const RawSocket one;
    ASSERT_TRUE(one.Connect(SocketPath()));
    one.Send("a");
    server->Disconnect(server->WaitForMessage(5000)->from);
    EXPECT_EQ(one.Receive(), "end");
    EXPECT_EQ(server->CountClients(), 0u);
}

TEST_F(MessagePipeServerTest, AMessageThatIsTooLargeEndsItsClientAlone) {
    const auto server = Serving();
    const RawSocket large;
    const RawSocket good;
    ASSERT_TRUE(large.Connect(SocketPath()));
    ASSERT_TRUE(good.Connect(SocketPath()));
    large.Send(std::string(kLargest + 1, 'a'));
    Message message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    EXPECT_TRUE(message->isTooLarge);
    EXPECT_EQ(message->bytes, "");
    EXPECT_EQ(large.Receive(), "end");
    good.Send(std::string(kLargest, 'b'));
    message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    EXPECT_FALSE(message->isTooLarge);
    EXPECT_EQ(message->bytes, std::string(kLargest, 'b'));
    EXPECT_EQ(server->CountClients(), 1u);
}

TEST_F(MessagePipeServerTest, AnEmptyMessageIsAMessage) {
    const auto server = Serving();
    const RawSocket client;
    ASSERT_TRUE(client.Connect(SocketPath()));
    client.Send("");
    const Message message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->bytes, "");
    EXPECT_FALSE(message->isTooLarge);
    EXPECT_EQ(server->CountClients(), 1u);
}

TEST_F(MessagePipeServerTest, ADeafClientIsDisconnected) {
    const auto server = Serving();
    const RawSocket deaf;
    ASSERT_TRUE(deaf.Connect(SocketPath()));
    bool isConnected = true;
    for (int i = 0; i < 100'000 && isConnected; ++i) {
        ASSERT_TRUE(deaf.Send("a", MSG_DONTWAIT));
        const Message message = server->WaitForMessage(5000);
        ASSERT_TRUE(message.has_value());
        server->Send(message->from, std::string(kLargest, 'b'));
        isConnected = server->CountClients() > 0;
    }
    EXPECT_EQ(server->CountClients(), 0u);
}

TEST_F(MessagePipeServerTest, OneOfAllServes) {
    auto server = Serving();
    MessagePipeServer second(kLargest);
    std::uint32_t error = 99;
    EXPECT_EQ(second.Claim(kAddress, error), Claimed::ByAnother);
    EXPECT_EQ(error, 0u);
    EXPECT_EQ(folder.ReadFile("PipeTest_pipe.lock"), std::to_string(getpid()) + "\n");
    server.reset();
    MessagePipeServer third(kLargest);
    EXPECT_EQ(third.Claim(kAddress, error), Claimed::ByUs);
}

TEST_F(MessagePipeServerTest, AClaimAloneLetsNobodyIn) {
    MessagePipeServer server(kLargest);
    std::uint32_t error = 0;
    ASSERT_EQ(server.Claim(kAddress, error), Claimed::ByUs);
    EXPECT_FALSE(RawSocket().Connect(SocketPath()));
    ASSERT_EQ(server.Open(), 0u);
    EXPECT_TRUE(RawSocket().Connect(SocketPath()));
}

TEST_F(MessagePipeServerTest, WhatAKilledServerLeftIsReplaced) {
    { EXPECT_TRUE(RawSocket().Listen(SocketPath())); }
    { EXPECT_TRUE(RawSocket().Listen(SocketPath() + ".new")); }
    const auto server = Serving();
    const RawSocket client;
    EXPECT_TRUE(client.Connect(SocketPath()));
}

TEST_F(MessagePipeServerTest, ThePipeIsForTheUserAloneAndGoesWithTheServer) {
    auto server = Serving();
    struct stat status {};
    ASSERT_EQ(stat(SocketPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    server.reset();
    EXPECT_FALSE(std::filesystem::exists(SocketPath()));
}

TEST_F(MessagePipeServerTest, AnotherServersPipeStays) {
    auto server = Serving();
    std::filesystem::remove(SocketPath());
    const RawSocket other;
    ASSERT_TRUE(other.Listen(SocketPath()));
    server.reset();
    EXPECT_TRUE(std::filesystem::exists(SocketPath()));
}

TEST_F(MessagePipeServerTest, AMissingFolderIsMadeForTheUserAlone) {
    const std::string path = folder.Path("session");
    const ScopedEnvironment elsewhere("XDG_RUNTIME_DIR", path);
    const mode_t mask = umask(0);
    const auto server = Serving();
    umask(mask);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(MessagePipeServerTest, AFolderThatCannotBeUsedIsAFailure) {
    const ScopedEnvironment elsewhere("XDG_RUNTIME_DIR", folder.WriteFile("file", ""));
    MessagePipeServer server(kLargest);
    std::uint32_t error = 0;
    EXPECT_EQ(server.Claim(kAddress, error), Claimed::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ENOTDIR));
}

TEST_F(MessagePipeServerTest, AFolderOfSomebodyElseInTmpIsRefused) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser has other people's folders";
    const ScopedEnvironment none("XDG_RUNTIME_DIR", std::nullopt);
    const std::string path = "/tmp/" + kAddress.application + "-65534";
    std::filesystem::remove_all(path);
    ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    ASSERT_EQ(chmod(path.c_str(), 0777), 0);
    {
        const OrdinaryUser nobody;
        MessagePipeServer server(kLargest);
        std::uint32_t error = 0;
        EXPECT_EQ(server.Claim(kAddress, error), Claimed::Failed);
        EXPECT_EQ(error, static_cast<std::uint32_t>(EACCES));
    }
    std::filesystem::remove_all(path);
}

TEST_F(MessagePipeServerTest, ManyClientsAreServedAtOnce) {
    const auto server = Serving();
    std::list<RawSocket> clients(200);
    for (const RawSocket& client : clients) {
        ASSERT_TRUE(client.Connect(SocketPath()));
        client.Send("a");
    }
    std::set<MessagePipeServer::Client> seen;
    for (std::size_t i = 0; i < clients.size(); ++i) {
        const Message message = server->WaitForMessage(5000);
        ASSERT_TRUE(message.has_value());
        seen.insert(message->from);
    }
    EXPECT_EQ(seen.size(), clients.size());
    for (const auto client : seen) server->Send(client, std::string("b"));
    for (const RawSocket& client : clients) EXPECT_EQ(client.Receive(), "b");
}

TEST_F(MessagePipeServerTest, ALoudClientDoesNotSilenceTheOthers) {
    const auto server = Serving();
    const RawSocket loud;
    const RawSocket quiet;
    ASSERT_TRUE(loud.Connect(SocketPath()));
    ASSERT_TRUE(quiet.Connect(SocketPath()));
    for (int i = 0; i < 50; ++i) loud.Send("loud");
    quiet.Send("quiet");
    bool heard = false;
    for (int i = 0; i < 3 && !heard; ++i) heard = server->WaitForMessage(5000)->bytes == "quiet";
    EXPECT_TRUE(heard);
}

TEST_F(MessagePipeServerTest, AClientForWhomThereIsNoRoomComesInLater) {
    const auto server = Serving();
    const RawSocket late;
    RawSocket early;
    ASSERT_TRUE(early.Connect(SocketPath()));
    ASSERT_TRUE(late.Connect(SocketPath()));
    early.Send("early");
    late.Send("late");
    const FewDescriptors one(1);
    EXPECT_EQ(server->WaitForMessage(5000)->bytes, "early");
    EXPECT_FALSE(server->WaitForMessage(120).has_value());
    early.Close();
    const Message message = server->WaitForMessage(5000);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->bytes, "late");
}

}  // namespace
