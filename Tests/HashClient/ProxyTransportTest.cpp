#include <HashClient/QelHashClient.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <memory>

#include "HashProxy/ProxyFolder.h"
#include "HashProxy/ScriptedProxy.h"
#include "Support/ThisSystem.h"

namespace {

using namespace std::string_literals;
using Strings = std::vector<std::string>;

constexpr char kName[] =
    "h\xFC"
    "fte";

/// The client as it is, with proxies that do what they like.
class ProxyTransport : public testing::Test {
  protected:
    ProxyTransport() { environment.Set("PATH", ScriptedProxy::EmptyProgram(folder.Path())); }
    ~ProxyTransport() override { QelHashClient::Shutdown(); }

    /// From now on the proxy does as `script` says; it outlives the client.
    void Serve(ScriptedProxy::Script script, bool closesEachTime = false) {
        proxy = std::make_unique<ScriptedProxy>(std::move(script), closesEachTime);
    }

    QelHashResult Add(const char* string = kName) {
        return QelHashClient::AddString("joint", string, hash, other.data(), 16);
    }
    static void ExpectFailure(std::int32_t location, std::uint32_t error) {
        EXPECT_EQ(QelHashClient::GetFailureLocation(), location);
        EXPECT_EQ(QelHashClient::GetFailureError(), error);
    }

    ProxyFolder folder;
    ProxyEnvironment environment{folder};
    int asked = 0;
    std::string nonsense;
    std::unique_ptr<ScriptedProxy> proxy;
    std::uint32_t hash = 0;
    std::array<char, 16> other{};
};

// Three names and a string of 4, 23, 6 and 6 bytes behind a header of 24.
const std::string kRequest =
    "\0\0\0\0\x3F\0\0\0\x10\0\0\0\x10\0\0\0\x23\0\0\0\x25\0\0\0"
    "app\0<Unspecified Resource>\0joint\0h\xFC"
    "fte\0"s;
const std::string kGoodbye = "\2\0\0\0\x15\0\0\0\4\0\0\0shutdown\0"s;

}  // namespace

TEST_F(ProxyTransport, AGoodOneSeesTheseBytes) {
    Serve(
        [](const std::string& request) { return ScriptedProxy::GoodAnswer(request, 0xCAFEBABE); });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    ASSERT_EQ(QelHashClient::SetApplicationName("app"), QelHashResult::Ok);
    EXPECT_EQ(Add(), QelHashResult::Ok);
    EXPECT_EQ(hash, 0xCAFEBABEu);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
    EXPECT_EQ(proxy->Requests(), (Strings{kRequest, kGoodbye}));
}

TEST_F(ProxyTransport, OneThatHangsUpInsteadOfAnsweringIsAskedFiveTimes) {
    Serve([](const std::string&) { return std::nullopt; });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    ASSERT_EQ(QelHashClient::SetApplicationName("app"), QelHashResult::Ok);
    EXPECT_EQ(Add(), QelHashResult::ProxyError);
    EXPECT_EQ(proxy->Requests(), Strings(5, kRequest));
    ExpectFailure(262, kPipeIsNotConnected);
}

TEST_F(ProxyTransport, OneThatHangsUpOnceIsAskedAgain) {
    Serve([this](const std::string& request) {
        return ++asked == 1 ? ScriptedProxy::Answer() : ScriptedProxy::GoodAnswer(request);
    });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add(), QelHashResult::Ok);
    EXPECT_EQ(hash, 0x12345678u);
    EXPECT_EQ(proxy->Requests().size(), 2u);
    ExpectFailure(0, 0);
}

TEST_F(ProxyTransport, OneThatHangsUpBehindEachAnswerIsOpenedAgain) {
    Serve([](const std::string& r) { return ScriptedProxy::GoodAnswer(r); }, true);
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(Add(), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
    EXPECT_EQ(proxy->Requests().size(), 9u);
}

TEST_F(ProxyTransport, NonsenseIsAnErrorAndNeverAHash) {
    const std::string start = "\0\0\0\x80\x16\0\0\0\x78\x56\x34\x12"s;
    Serve([this](const std::string&) { return nonsense; });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    for (const std::string& reply :
         {""s, "x"s, "\0\0\0\x80"s, start, "\5\0\0\0\x10\0\0\0\1\0\0\0\0\0\0\0"s,
          "\2\0\0\x80\x10\0\0\0\1\0\0\0\0\0\0\0"s, "\0\0\0\0\x10\0\0\0\1\0\0\0\0\0\0\0"s,
          start + "\4\0\0\0"s, start + "\xFF\xFF\xFF\xFF"s, start + "\xF4\xFF\xFF\xFF"s,
          start + "\x0A\0\0\0spine\0"s, std::string(4096, '\xFF')}) {
        nonsense = reply;
        EXPECT_EQ(Add(), QelHashResult::ProxyError) << reply.size();
        EXPECT_EQ(hash, 0u);
        ExpectFailure(0, 0);
    }
    nonsense = start + "\4\0\0\0a very long spine without an end"s;
    EXPECT_EQ(Add(), QelHashResult::HashCollision);
    EXPECT_EQ(hash, 0x12345678u);
    EXPECT_STREQ(other.data(), "a very long spi");
}

TEST_F(ProxyTransport, AReplyThatIsTooLongIsAnErrorAtOnce) {
    Serve([](const std::string&) { return std::string(4097, '\0'); });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add(), QelHashResult::ProxyError);
    EXPECT_EQ(proxy->Requests().size(), 1u);
    ExpectFailure(254, kPipeMessageIsTooLong);
}

TEST_F(ProxyTransport, ALateAnswerIsAwaited) {
    Serve([](const std::string& request) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        return ScriptedProxy::GoodAnswer(request);
    });
    ASSERT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add(), QelHashResult::Ok);
    EXPECT_EQ(hash, 0x12345678u);
}

TEST_F(ProxyTransport, OneThatIsLateWithItsPipeIsWaitedFor) {
    std::thread late([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        Serve([](const std::string& request) { return ScriptedProxy::GoodAnswer(request); });
    });
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    late.join();
    EXPECT_EQ(Add(), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}

TEST_F(ProxyTransport, OneThatNeverListensIsGivenUpAfterTwoSeconds) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::ConnectFailed);
    const auto time = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(time, std::chrono::milliseconds(2000));
    EXPECT_LT(time, std::chrono::milliseconds(10'000));
    ExpectFailure(141, ENOENT);
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::AlreadyInitialised);
    EXPECT_EQ(Add(), QelHashResult::ProxyError);
    ExpectFailure(254, kPipeIsNotOpen);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::ProxyError);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}
