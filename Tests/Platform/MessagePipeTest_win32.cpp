#include <Platform/MessagePipe.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <chrono>
#include <optional>
#include <thread>

namespace {

using Platform::MessagePipe;
using Platform::PipeAddress;
using Platform::PipeExchange;

/// The name is the process's own, for all tests of a machine share the names of pipes.
const PipeAddress kAddress{"PipeTest", "PipeTest_pipe" + std::to_string(GetCurrentProcessId())};

/// The one instance of the pipe, served by hand.
class RawPipe {
  public:
    RawPipe()
        : handle(CreateNamedPipeA(("\\\\.\\pipe\\" + kAddress.pipe).c_str(), PIPE_ACCESS_DUPLEX,
                                  PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1, 4096,
                                  4096, 0, nullptr)) {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }
    RawPipe(const RawPipe&) = delete;
    RawPipe& operator=(const RawPipe&) = delete;
    ~RawPipe() { Close(); }

    std::string Receive() const {
        std::string message(4096, '\0');
        DWORD size = 0;
        if (!ReadFile(handle, message.data(), 4096, &size, nullptr)) return "end";
        message.resize(size);
        return message;
    }
    void Send(const std::string& message) const {
        DWORD size = 0;
        WriteFile(handle, message.data(), static_cast<DWORD>(message.size()), &size, nullptr);
    }
    void Disconnect() const { DisconnectNamedPipe(handle); }
    void Close() {
        if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE handle;
};

class MessagePipeTest : public testing::Test {
  protected:
    PipeExchange Transact(const std::string& request, std::size_t room = 16) {
        reply.assign(room, 'x');
        const PipeExchange exchange = pipe.Transact(request, reply, 5000, received, error);
        reply.resize(received);
        return exchange;
    }

    void OpenWithMessages() {
        ASSERT_EQ(pipe.Open(kAddress), 0u);
        ASSERT_EQ(pipe.SetMessageMode(), 0u);
    }

    MessagePipe pipe;
    std::string reply;
    std::size_t received = 99;
    std::uint32_t error = 99;
};

TEST(PipeErrorText, IsTheSystemsOwn) {
    EXPECT_EQ(Platform::PipeErrorText(ERROR_ACCESS_DENIED), "Access denied");
    EXPECT_EQ(Platform::PipeErrorText(ERROR_PIPE_BUSY), "Pipe busy");
    EXPECT_EQ(Platform::PipeErrorText(0x20000000), "Unknown error 536870912");
}

TEST_F(MessagePipeTest, AMessageGoesOutAndOneComesBack) {
    const RawPipe server;
    OpenWithMessages();
    EXPECT_TRUE(pipe.IsOpen());
    std::thread answer([&] {
        EXPECT_EQ(server.Receive(), std::string("a\0b", 3));
        server.Send("reply");
        EXPECT_EQ(server.Receive(), "end");
    });
    EXPECT_EQ(Transact(std::string("a\0b", 3)), PipeExchange::Done);
    EXPECT_EQ(reply, "reply");
    EXPECT_EQ(error, 0u);
    pipe.Close();
    EXPECT_FALSE(pipe.IsOpen());
    answer.join();
}

TEST_F(MessagePipeTest, AReplyThatDoesNotFitFails) {
    const RawPipe server;
    OpenWithMessages();
    std::thread answer([&] {
        server.Receive();
        server.Send("123456");
    });
    EXPECT_EQ(Transact("a", 5), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ERROR_MORE_DATA));
    EXPECT_EQ(received, 0u);
    answer.join();
}

TEST_F(MessagePipeTest, AServerThatNeverAnswersIsGivenUp) {
    const RawPipe server;
    OpenWithMessages();
    std::array<char, 16> room{};
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(pipe.Transact(std::string("a"), room, 100, received, error), PipeExchange::Failed);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(80));
    EXPECT_EQ(error, Platform::kNoReplyInTime);
    EXPECT_EQ(received, 0u);
}

TEST_F(MessagePipeTest, AServerThatDisconnectsIsNotConnected) {
    const RawPipe server;
    OpenWithMessages();
    server.Disconnect();
    EXPECT_EQ(Transact("a"), PipeExchange::NotConnected);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(MessagePipeTest, AServerThatIsGoneIsABrokenPipe) {
    RawPipe server;
    OpenWithMessages();
    server.Close();
    const PipeExchange exchange = Transact("a");
    EXPECT_TRUE(exchange == PipeExchange::BadPipe || exchange == PipeExchange::NotConnected)
        << error;
}

TEST_F(MessagePipeTest, WithoutMessageModeNoExchangeIsMade) {
    const RawPipe server;
    ASSERT_EQ(pipe.Open(kAddress), 0u);
    EXPECT_EQ(Transact("a"), PipeExchange::BadPipe);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ERROR_BAD_PIPE));
}

TEST_F(MessagePipeTest, AMissingPipeAndABusyOneAreToldApart) {
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(ERROR_FILE_NOT_FOUND));
    auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForPipe(kAddress, ERROR_FILE_NOT_FOUND, 100),
              static_cast<std::uint32_t>(ERROR_FILE_NOT_FOUND));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(80));
    const RawPipe server;
    MessagePipe first;
    EXPECT_EQ(first.Open(kAddress), 0u);
    EXPECT_EQ(pipe.Open(kAddress), static_cast<std::uint32_t>(ERROR_PIPE_BUSY));
    begin = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForPipe(kAddress, ERROR_PIPE_BUSY, 100),
              static_cast<std::uint32_t>(ERROR_SEM_TIMEOUT));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(80));
}

TEST_F(MessagePipeTest, APipeOfSomebodyElseIsNotTriedWithoutAPause) {
    const RawPipe server;
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i) EXPECT_EQ(WaitForPipe(kAddress, ERROR_ACCESS_DENIED, 500), 0u);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(80));
}

TEST_F(MessagePipeTest, APipeThatComesDuringTheWaitEndsIt) {
    std::optional<RawPipe> server;
    std::thread starting([&] {
        Sleep(100);
        server.emplace();
    });
    EXPECT_EQ(WaitForPipe(kAddress, ERROR_FILE_NOT_FOUND, 10'000), 0u);
    EXPECT_EQ(pipe.Open(kAddress), 0u);
    starting.join();
}

TEST_F(MessagePipeTest, AClosedPipeFails) {
    EXPECT_EQ(Transact("a"), PipeExchange::Failed);
    EXPECT_EQ(error, static_cast<std::uint32_t>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(pipe.Number(), 0xFFFFFFFFu);
}

TEST_F(MessagePipeTest, ChildrenDoNotInheritThePipe) {
    const RawPipe server;
    OpenWithMessages();
    DWORD flags = HANDLE_FLAG_INHERIT;
    ASSERT_TRUE(GetHandleInformation(
        reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(pipe.Number())), &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0u);
}

}  // namespace
