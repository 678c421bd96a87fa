#include <Platform/MessagePipe.h>

#include "Platform/FewDescriptors.h"
#include "Platform/RawSocket.h"
#include "Platform/ScopedEnvironment.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using Platform::MessagePipe;
using Platform::PipeAddress;
using Platform::PipeExchange;
using Platform::WaitForPipe;

// Tests run side by side, and /tmp is shared.
const PipeAddress kAddress{"PipeTest" + std::to_string(getpid()), "PipeTest_pipe"};

/// The folder in /tmp of a user who has no session.
std::string FolderInTmp() {
    return "/tmp/" + kAddress.application + "-" + std::to_string(geteuid());
}

class MessagePipeTest : public testing::Test {
  protected:
    std::string SocketPath() const { return folder.Path(kAddress.pipe); }

    PipeExchange Transact(const std::string& request, std::size_t room = 16) {
        reply.assign(room, 'x');
        const PipeExchange exchange = pipe.Transact(request, reply, patience, received, error);
        reply.resize(received);
        return exchange;
    }

    /// The pipe, open, and the other end of it.
    int Opened(const RawSocket& server) {
        EXPECT_TRUE(server.Listen(SocketPath()));
        EXPECT_EQ(pipe.Open(kAddress), 0u);
        return server.Accept();
    }

    TemporaryFolder folder;
    ScopedEnvironment session{"XDG_RUNTIME_DIR", folder.Path()};
    MessagePipe pipe;
    std::string reply;
    std::size_t received = 99;
    std::uint32_t error = 99;
    int patience = 5000;
};

TEST(PipeErrorText, IsTheSystemsOwn) {
    EXPECT_EQ(Platform::PipeErrorText(EADDRINUSE), "Address already in use");
}

TEST_F(MessagePipeTest, AMessageGoesOutAndOneComesBack) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    EXPECT_TRUE(pipe.IsOpen());
    EXPECT_EQ(pipe.SetMessageMode(), 0u);
    std::thread answer([&] {
        EXPECT_EQ(other.Receive(), std::string("a\0b", 3));
        other.Send("reply");
    });
    EXPECT_EQ(Transact(std::string("a\0b", 3)), PipeExchange::Done);
    answer.join();
    EXPECT_EQ(reply, "reply");
    EXPECT_EQ(error, 0u);
    other.Send("");
    pipe.Close();
    EXPECT_FALSE(pipe.IsOpen());
    EXPECT_EQ(other.Receive(), "end");
}

TEST_F(MessagePipeTest, AReplyMayFillItsBuffer) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    std::thread answer([&] {
        other.Receive();
        other.Send("12345");
        other.Receive();
        other.Send("123456");
    });
    EXPECT_EQ(Transact("a", 5), PipeExchange::Done);
    EXPECT_EQ(reply, "12345");
    EXPECT_EQ(Transact("a", 5), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(EMSGSIZE));
    EXPECT_EQ(received, 0u);
    answer.join();
}

TEST_F(MessagePipeTest, AnEmptyReplyIsAReply) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    std::thread answer([&] {
        other.Receive();
        other.Send("");
        other.Receive();
        other.Send("b");
    });
    EXPECT_EQ(Transact("a"), PipeExchange::Done);
    EXPECT_EQ(reply, "");
    EXPECT_EQ(Transact("a"), PipeExchange::Done);
    EXPECT_EQ(reply, "b");
    answer.join();
}

TEST_F(MessagePipeTest, AnOtherEndThatClosesInsteadOfAnsweringIsNotConnected) {
    const RawSocket server;
    RawSocket other(Opened(server));
    std::thread answer([&] {
        other.Receive();
        other.Close();
    });
    EXPECT_EQ(Transact("a"), PipeExchange::NotConnected);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ENOTCONN));
    answer.join();
}

TEST_F(MessagePipeTest, AnOtherEndThatClosesWithoutALookIsNotConnected) {
    const RawSocket server;
    RawSocket other(Opened(server));
    std::thread answer([&] {
        std::array<char, 1> byte;
        recv(other.Descriptor(), byte.data(), 1, MSG_PEEK);
        other.Close();
    });
    EXPECT_EQ(Transact("a"), PipeExchange::NotConnected);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ECONNRESET));
    answer.join();
}

TEST_F(MessagePipeTest, AnOtherEndThatClosedBeforeIsABadPipe) {
    const RawSocket server;
    RawSocket other(Opened(server));
    other.Close();
    EXPECT_EQ(Transact("a"), PipeExchange::BadPipe);
    EXPECT_EQ(error, static_cast<std::uint32_t>(EPIPE));
}

TEST_F(MessagePipeTest, AMessageThatNobodyAskedForIsNotTakenForAReply) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    other.Send("unasked");
    EXPECT_EQ(Transact("a"), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(EBUSY));
}

TEST_F(MessagePipeTest, AnEmptyMessageThatNobodyAskedForIsNotTakenForAReply) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    other.Send("");
    EXPECT_EQ(Transact("a"), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(EBUSY));
}

TEST_F(MessagePipeTest, AClosedPipeFails) {
    EXPECT_EQ(Transact("a"), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(EBADF));
    EXPECT_EQ(pipe.SetMessageMode(), static_cast<std::uint32_t>(EBADF));
    EXPECT_EQ(pipe.Number(), 0xFFFFFFFFu);
}

TEST_F(MessagePipeTest, ALateReplyIsAwaitedAndPatienceEnds) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    std::thread answer([&] {
        other.Receive();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        other.Send("late");
    });
    EXPECT_EQ(Transact("a"), PipeExchange::Done);
    EXPECT_EQ(reply, "late");
    answer.join();
    patience = 20;
    EXPECT_EQ(Transact("a"), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ETIMEDOUT));
}

TEST_F(MessagePipeTest, ASocketThatKnowsNoMessagesIsNotOpened) {
    const int stream = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    SocketPath().copy(place.sun_path, sizeof place.sun_path - 1);
    ASSERT_EQ(bind(stream, reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(listen(stream, 5), 0);
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(EPROTOTYPE));
    EXPECT_FALSE(pipe.IsOpen());
    close(stream);
}

TEST_F(MessagePipeTest, AMissingPipeAndALeftoverAreToldApart) {
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(ENOENT));
    { EXPECT_TRUE(RawSocket().Listen(SocketPath())); }
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(ECONNREFUSED));
    const ScopedEnvironment elsewhere("XDG_RUNTIME_DIR", folder.Path("missing"));
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(ENOENT));
}

TEST_F(MessagePipeTest, AServerWithoutRoomDoesNotHoldTheClient) {
    const RawSocket server;
    ASSERT_TRUE(server.Listen(SocketPath(), 0));
    MessagePipe first;
    EXPECT_EQ(first.Open(kAddress), 0u);
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(EAGAIN));
}

TEST_F(MessagePipeTest, ALongFolderIsNoHindrance) {
    const std::string path = folder.Path(std::string(150, 'd'));
    mkdir(path.c_str(), 0700);
    const ScopedEnvironment longer("XDG_RUNTIME_DIR", path);
    // The address of a socket is short; this one is reached from its folder alone.
    const RawSocket server;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(path);
    EXPECT_TRUE(server.Listen(kAddress.pipe));
    std::filesystem::current_path(before);
    EXPECT_EQ(pipe.Open(kAddress), 0u);
}

TEST_F(MessagePipeTest, AProcessWithoutDescriptorsIsToldSo) {
    const RawSocket server;
    ASSERT_TRUE(server.Listen(SocketPath()));
    const FewDescriptors one(1);
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(EMFILE));
    const FewDescriptors none(0);
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(EMFILE));
}

TEST_F(MessagePipeTest, ChildrenDoNotInheritThePipe) {
    const RawSocket server;
    const RawSocket other(Opened(server));
    EXPECT_EQ(fcntl(static_cast<int>(pipe.Number()), F_GETFD), FD_CLOEXEC);
}

TEST_F(MessagePipeTest, TheWaitEndsWhenThePipeIsThere) {
    EXPECT_EQ(WaitForPipe(kAddress, ENOENT, 30), static_cast<std::uint32_t>(ENOENT));
    const RawSocket server;
    std::thread begin([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        EXPECT_TRUE(server.Listen(SocketPath()));
    });
    EXPECT_EQ(WaitForPipe(kAddress, ENOENT, 60'000), 0u);
    begin.join();
    // It may come before the wait begins.
    EXPECT_EQ(WaitForPipe(kAddress, ENOENT, 60'000), 0u);
}

TEST_F(MessagePipeTest, TheWaitLastsAsLongAsItSays) {
    const auto begin = std::chrono::steady_clock::now();
    WaitForPipe(kAddress, ENOENT, 100);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(100));
}

TEST_F(MessagePipeTest, ALeftoverIsWaitedForUntilAServerTakesItsPlace) {
    { EXPECT_TRUE(RawSocket().Listen(SocketPath())); }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForPipe(kAddress, ECONNREFUSED, 200), static_cast<std::uint32_t>(ECONNREFUSED));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(200));
    const RawSocket server;
    std::thread replace([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        std::filesystem::remove(SocketPath());
        EXPECT_TRUE(server.Listen(SocketPath()));
    });
    EXPECT_EQ(WaitForPipe(kAddress, ECONNREFUSED, 60'000), 0u);
    replace.join();
    EXPECT_EQ(pipe.Open(kAddress), 0u);
}

TEST_F(MessagePipeTest, AServerWithoutRoomIsLeftInPeaceForAMoment) {
    const RawSocket server;
    ASSERT_TRUE(server.Listen(SocketPath()));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForPipe(kAddress, EAGAIN, 60'000), 0u);
    const auto time = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(time, std::chrono::milliseconds(50));
    EXPECT_LT(time, std::chrono::milliseconds(30'000));
}

/// A user without a session; as the superuser the test becomes somebody else, whose folder it is.
class MessagePipeInTmp : public testing::Test {
  protected:
    MessagePipeInTmp() { Clear(); }
    ~MessagePipeInTmp() override { Clear(); }

    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "only the superuser has other people's folders";
    }
    void Clear() const { std::filesystem::remove_all(nobodysFolder); }

    static constexpr uid_t kNobody = 65534;
    const std::string nobodysFolder = "/tmp/" + kAddress.application + "-65534";
    ScopedEnvironment session{"XDG_RUNTIME_DIR", std::nullopt};
    MessagePipe pipe;
};

TEST_F(MessagePipeInTmp, TheUsersOwnFolderIsTaken) {
    for (const char* const variable : {static_cast<const char*>(nullptr), "", "relative"}) {
        Clear();
        const ScopedEnvironment none("XDG_RUNTIME_DIR", variable == nullptr
                                                            ? std::nullopt
                                                            : std::optional(std::string(variable)));
        const OrdinaryUser nobody;
        ASSERT_EQ(FolderInTmp(), nobodysFolder);
        ASSERT_EQ(mkdir(FolderInTmp().c_str(), 0700), 0);
        const RawSocket server;
        ASSERT_TRUE(server.Listen(FolderInTmp() + "/PipeTest_pipe"));
        EXPECT_EQ(pipe.Open(kAddress), 0u);
        pipe.Close();
    }
}

TEST_F(MessagePipeInTmp, AFolderOfSomebodyElseIsRefused) {
    const std::string path = nobodysFolder;
    ASSERT_EQ(mkdir(path.c_str(), 0755), 0);
    const RawSocket server;
    ASSERT_TRUE(server.Listen(path + "/PipeTest_pipe"));
    ASSERT_EQ(chmod((path + "/PipeTest_pipe").c_str(), 0777), 0);
    const OrdinaryUser nobody;
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(EACCES));
    EXPECT_EQ(WaitForPipe(kAddress, EACCES, 1), static_cast<std::uint32_t>(EACCES));
}

TEST_F(MessagePipeInTmp, AFolderInWhichOthersMayWriteIsRefused) {
    const OrdinaryUser nobody;
    ASSERT_EQ(mkdir(FolderInTmp().c_str(), 0700), 0);
    const RawSocket server;
    ASSERT_TRUE(server.Listen(FolderInTmp() + "/PipeTest_pipe"));
    for (const mode_t mode : {0702, 0720}) {
        ASSERT_EQ(chmod(FolderInTmp().c_str(), mode), 0);
        EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(EACCES));
    }
    ASSERT_EQ(chmod(FolderInTmp().c_str(), 0755), 0);
    EXPECT_EQ(pipe.Open(kAddress), 0u);
}

TEST_F(MessagePipeInTmp, ALinkToAFolderIsRefused) {
    const TemporaryFolder folder;
    ASSERT_EQ(chown(folder.Path().c_str(), kNobody, kNobody), 0);
    const OrdinaryUser nobody;
    ASSERT_EQ(symlink(folder.Path().c_str(), FolderInTmp().c_str()), 0);
    const RawSocket server;
    ASSERT_TRUE(server.Listen(folder.Path("PipeTest_pipe")));
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(ENOTDIR));
}

}  // namespace
