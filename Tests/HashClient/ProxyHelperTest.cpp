#include "ProxyHelper.h"

#include <HashClient/QelHashClient.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "HashClient/FakeProxy.h"
#include "Support/ThisSystem.h"

namespace {

using Strings = std::vector<std::string>;

class ProxyConnection : public FakeProxyTest {
  protected:
    static void ExpectFailure(const ProxyHelper& helper, std::int32_t location,
                              std::uint32_t error) {
        EXPECT_EQ(helper.failure.location, location);
        EXPECT_EQ(helper.failure.error, error);
    }
};

/// What the debug log holds after `conversation`, each line without what stands before its text.
/// The log reads its variable once in a process, so the conversation runs in one of its own.
std::string LogOf(const std::function<void()>& conversation) {
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    const auto path =
        std::filesystem::temp_directory_path() / (std::string("ProxyLinesTest.") + test->name());
    std::filesystem::remove(path);
    const auto run = [&] {
        setenv("QEL_HASH_PROXY_DEBUG_MODE", ("file:" + path.string()).c_str(), 1);
        conversation();
        std::exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "^$");
    std::ifstream file(path, std::ios_base::binary);
    std::string line;
    std::string lines;
    while (std::getline(file, line)) {
        line = WithLineFeeds(line);
        const std::size_t start = line.find("): ");
        lines += (start == std::string::npos ? line : line.substr(start + 3)) + "\n";
    }
    file.close();
    std::filesystem::remove(path);
    return lines;
}

class ProxyLinesDeathTest : public FakeProxyTest {};

constexpr char kStarted[] = "Successful CreateProcess() for QelHashProxy.exe\n";
constexpr char kTry[] = "Attempting to CreateFile() on the pipe\n";
constexpr char kConnected[] = "Successfully established connection to proxy (0000002a)\n";
constexpr char kNotConnected[] = "Failed to establish connection to proxy\n\n";

}  // namespace

TEST_F(ProxyConnection, TakesTheseStepsInThisOrder) {
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::Good);
    EXPECT_EQ(Script().programs, Strings{"QelHashProxy.exe"});
    EXPECT_EQ(Script().calls,
              (Strings{"CreateTimer", "SetTimer 2000", "Open", "SetMessageMode", "CloseTimer"}));
    ExpectFailure(helper, 0, 0);
}

TEST_F(ProxyConnection, AProgramThatDoesNotStartIsNotWaitedFor) {
    Script().spawnError = 13;
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::SpawnFailed);
    EXPECT_EQ(Script().calls, Strings{});
    ExpectFailure(helper, 58, 13);
}

TEST_F(ProxyConnection, APipeThatIsNotThereYetIsWaitedFor) {
    Script().openErrors = {2, 231};
    Script().waitErrors = {2};
    Script().timerFired = {false, false};
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::Good);
    EXPECT_EQ(Script().calls,
              (Strings{"CreateTimer", "SetTimer 2000", "Open", "Wait 500", "TimerHasFired", "Open",
                       "Wait 500", "TimerHasFired", "Open", "SetMessageMode", "CloseTimer"}));
    ExpectFailure(helper, 0, 0);
}

TEST_F(ProxyConnection, TheWaitEndsWithTheTimer) {
    Script().openErrors = {2, 3, 4};
    Script().waitErrors = {2, 121};
    Script().timerFired = {false, true};
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::ConnectFailed);
    EXPECT_EQ(Script().CountCalls("Open"), 2);
    EXPECT_EQ(Script().calls.back(), "CloseTimer");
    ExpectFailure(helper, 141, 121);
}

TEST_F(ProxyConnection, AWaitThatWorkedLeavesTheReasonOfTheOpen) {
    Script().openErrors = {111};
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::ConnectFailed);
    ExpectFailure(helper, 141, 111);
}

TEST_F(ProxyConnection, APipeWithoutMessagesIsTriedAgainAtOnce) {
    Script().modeErrors = {87};
    Script().timerFired = {false};
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::Good);
    EXPECT_EQ(Script().calls,
              (Strings{"CreateTimer", "SetTimer 2000", "Open", "SetMessageMode", "Close",
                       "TimerHasFired", "Open", "SetMessageMode", "CloseTimer"}));
    // The connection is there; what went wrong on the way stays to be seen until it is used.
    ExpectFailure(helper, 151, 87);
}

TEST_F(ProxyConnection, APipeThatNeverTakesMessagesDoesNotHoldTheToolForEver) {
    Script().modeErrors = {87, 88, 89};
    Script().timerFired = {false, true};
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::ConnectFailed);
    EXPECT_EQ(Script().CountCalls("Close"), 2);
    ExpectFailure(helper, 151, 88);
}

TEST_F(ProxyConnection, WithoutATimerNothingIsTried) {
    Script().createTimerError = 6;
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::ConnectFailed);
    EXPECT_EQ(Script().calls, Strings{"CreateTimer"});
    ExpectFailure(helper, 174, 6);
}

TEST_F(ProxyConnection, ATimerThatCannotBeSetIsClosed) {
    Script().setTimerError = 87;
    const ProxyHelper helper;
    EXPECT_EQ(helper.status, ProxyHelper::Status::ConnectFailed);
    EXPECT_EQ(Script().calls, (Strings{"CreateTimer", "SetTimer 2000", "CloseTimer"}));
    ExpectFailure(helper, 165, 87);
}

TEST_F(ProxyConnection, AnOpenPipeIsClosedFirst) {
    ProxyHelper helper;
    Script().calls.clear();
    EXPECT_TRUE(helper.Connect());
    EXPECT_EQ(Script().calls, (Strings{"Close", "CreateTimer", "SetTimer 2000", "Open",
                                       "SetMessageMode", "CloseTimer"}));
}

TEST_F(ProxyConnection, ANewConnectionForgetsTheFailureOfTheLast) {
    ProxyHelper helper;
    Script().openErrors = {2};
    EXPECT_FALSE(helper.Connect());
    ExpectFailure(helper, 141, 2);
    EXPECT_TRUE(helper.Connect());
    ExpectFailure(helper, 0, 0);
}

TEST_F(ProxyConnection, AnExchangeForgetsTheFailureOfTheLastAndCounts) {
    ProxyHelper helper;
    Script().openErrors = {2};
    std::uint32_t count = 99;
    EXPECT_FALSE(helper.Transact(std::string("a"), helper.receiveBuffer, &count));
    EXPECT_EQ(count, 0u);
    ExpectFailure(helper, 254, EBADF);
    EXPECT_TRUE(helper.Connect());
    Reply("four");
    EXPECT_TRUE(helper.Transact(std::string("a"), helper.receiveBuffer, &count));
    EXPECT_EQ(count, 4u);
    ExpectFailure(helper, 0, 0);
    Reply("four");
    EXPECT_TRUE(helper.Transact(std::string("a"), helper.receiveBuffer, nullptr));
}

TEST_F(ProxyConnection, TheGoodbyeOfTheHelperClosesAnOpenPipeAlone) {
    { const ProxyHelper helper; }
    EXPECT_EQ(Script().CountCalls("Close"), 1);
    Script().calls.clear();
    Script().openErrors = {2};
    { const ProxyHelper helper; }
    EXPECT_EQ(Script().CountCalls("Close"), 0);
}

TEST_F(ProxyLinesDeathTest, AWholeConversation) {
    EXPECT_EQ(LogOf([] {
                  QelHashClient::Initialise();
                  Reply(std::string("\0\0\0\x80\x10\0\0\0\1\0\0\0\0\0\0\0", 16));
                  Reply(std::string("\5\0\0\0\x10\0\0\0\1\0\0\0\0\0\0\0", 16));
                  Reply(std::string("\6\0\0\0", 4));
                  std::uint32_t hash = 0;
                  char other = 0;
                  QelHashClient::AddString("joint", "hips", hash, &other, 1);
                  QelHashClient::AddString("a \"b\"", "100%s", hash, &other, 1);
                  QelHashClient::Shutdown();
              }),
              std::string(kStarted) + kTry + kConnected +
                  "Proxy command : AddString( \"joint\", \"hips\" )\n"
                  "Proxy command : AddString( \"a \"b\"\", \"100%s\" )\n"
                  "Malformed Transact() result in AddString(). (Id:5)\n\n"
                  "Proxy command : Shutdown()\n"
                  "Malformed Transact() result in Shutdown(). (Id:6)\n\n"
                  "Closing proxy connection 0000002a\n");
}

TEST_F(ProxyLinesDeathTest, AProgramThatDoesNotStart) {
    Script().spawnError = 2;
    EXPECT_EQ(LogOf([] { const ProxyHelper helper; }),
              "Failed during CreateProcess() for QelHashProxy.exe with error code 2\n\n");
}

TEST_F(ProxyLinesDeathTest, AConnectionThatFails) {
    Script().openErrors = {2, 2};
    Script().waitErrors = {2, 121};
    Script().timerFired = {false, true};
    EXPECT_EQ(LogOf([] { const ProxyHelper helper; }),
              std::string(kStarted) + kTry + kTry +
                  "Failed to wait for the proxy pipe, with error 121\n\n" + kNotConnected);
}

TEST_F(ProxyLinesDeathTest, AModeThatIsNotTaken) {
    Script().modeErrors = {87};
    Script().timerFired = {false};
    EXPECT_EQ(LogOf([] { const ProxyHelper helper; }),
              std::string(kStarted) + kTry +
                  "Failed in SetNamedPipeHandleState() for proxy connection attempt, with error "
                  "87\n\n" +
                  kTry + kConnected + "Closing proxy connection 0000002a\n");
}

TEST_F(ProxyLinesDeathTest, TimersThatFail) {
    EXPECT_EQ(LogOf([] {
                  Script().createTimerError = 6;
                  ProxyHelper helper;
                  Script().createTimerError = 0;
                  Script().setTimerError = 7;
                  helper.Connect();
              }),
              std::string(kStarted) +
                  "Failed during SetWaitableTimer for proxy connection attempt, with error 6\n\n" +
                  kNotConnected +
                  "Failed in SetWaitableTimer() for proxy connection attempt, with error 7\n\n" +
                  kNotConnected);
}

TEST_F(ProxyLinesDeathTest, PipesThatBreak) {
    const std::string again =
        std::string("Closing old pipe 0000002a prior to ProxyHelper::Connect\n") + kTry +
        kConnected;
    const std::string gone =
        "TransactNamedPipe for 0000002a failed with ERROR_PIPE_NOT_CONNECTED. Retrying "
        "connection.\n";
    EXPECT_EQ(LogOf([] {
                  ProxyHelper helper;
                  Script().turns = {{Platform::PipeExchange::BadPipe, {}, 230},
                                    {Platform::PipeExchange::NotConnected, {}, 233}};
                  helper.Transact(std::string("a"), helper.receiveBuffer, nullptr);
              }),
              std::string(kStarted) + kTry + kConnected +
                  "TransactNamedPipe for 0000002a failed with ERROR_BAD_PIPE. Retrying "
                  "connection.\n" +
                  again + gone + again + gone + again + gone + again + gone + again +
                  "TransactNamedPipe for 0000002a returned with error 32 (connectRetryCount = "
                  "-1)\n\n"
                  "Closing proxy connection 0000002a\n");
}

TEST_F(ProxyLinesDeathTest, AnotherErrorAndAReconnectionThatFails) {
    EXPECT_EQ(LogOf([] {
                  ProxyHelper helper;
                  Script().turns = {{Platform::PipeExchange::Failed, {}, 99},
                                    {Platform::PipeExchange::NotConnected, {}, 233}};
                  helper.Transact(std::string("a"), helper.receiveBuffer, nullptr);
                  Script().openErrors = {2};
                  helper.Transact(std::string("a"), helper.receiveBuffer, nullptr);
              }),
              std::string(kStarted) + kTry + kConnected +
                  "TransactNamedPipe for 0000002a failed with unhandled error 99\n\n"
                  "TransactNamedPipe for 0000002a failed with ERROR_PIPE_NOT_CONNECTED. Retrying "
                  "connection.\n"
                  "Closing old pipe 0000002a prior to ProxyHelper::Connect\n" +
                  kTry + "Failed to wait for the proxy pipe, with error 2\n\n" + kNotConnected +
                  "TransactNamedPipe for ffffffff failed with unhandled error 9\n\n");
}
