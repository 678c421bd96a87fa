#include <HashClient/QelHashClient.h>

#include <array>
#include <cerrno>
#include <string>

#include "HashClient/FakeProxy.h"
#include "Platform/ScopedEnvironment.h"

namespace {

using Strings = std::vector<std::string>;

template <std::size_t N>
std::string Bytes(const char (&text)[N]) {
    return std::string(text, N - 1);
}

class ProxyConversation : public FakeProxyTest {
  protected:
    QelHashResult Add(const char* string, std::int32_t otherSize = 16) {
        other.fill('x');
        return QelHashClient::AddString("joint", string, hash, other.data(), otherSize);
    }

    std::uint32_t hash = 0;
    std::array<char, 16> other{};
};

const std::string kHashReply = Bytes("\0\0\0\x80\x10\0\0\0\x78\x56\x34\x12\0\0\0\0");
const std::string kShutdownRequest = Bytes("\2\0\0\0\x15\0\0\0\4\0\0\0shutdown\0");

}  // namespace

TEST_F(ProxyConversation, StartsTheProgramAndConnects) {
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Script().programs, Strings{"QelHashProxy.exe"});
    EXPECT_EQ(Script().CountCalls("Open"), 1);
    EXPECT_TRUE(Script().requests.empty());
}

TEST_F(ProxyConversation, WithoutTheVariableNothingIsStartedOrOpened) {
    const ScopedEnvironment unset("QEL_HASH_SERVER_NAME", std::nullopt);
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Add("hips"), QelHashResult::Ok);
    EXPECT_TRUE(Script().programs.empty());
    EXPECT_TRUE(Script().calls.empty());
}

TEST_F(ProxyConversation, AProgramThatDoesNotStartFailsWithTheSystemsError) {
    Script().spawnError = 13;
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::SpawnFailed);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 58);
    EXPECT_EQ(QelHashClient::GetFailureError(), 13u);
    EXPECT_EQ(Script().CountCalls("Open"), 0);
}

TEST_F(ProxyConversation, AStringGoesOutWithItsSelfRelativeOffsets) {
    QelHashClient::Initialise();
    QelHashClient::SetApplicationName("app.exe");
    Reply(kHashReply);
    EXPECT_EQ(Add("hips"), QelHashResult::Ok);
    EXPECT_EQ(hash, 0x12345678u);
    EXPECT_EQ(other, (std::array<char, 16>{}));
    // The four strings take 8, 23, 6 and 5 bytes: 66 in all.
    EXPECT_EQ(Script().requests, Strings{Bytes("\0\0\0\0"
                                               "\x42\0\0\0"
                                               "\x10\0\0\0"
                                               "\x14\0\0\0"
                                               "\x27\0\0\0"
                                               "\x29\0\0\0"
                                               "app.exe\0"
                                               "<Unspecified Resource>\0"
                                               "joint\0"
                                               "hips\0")});
}

TEST_F(ProxyConversation, AnApplicationThatGivesNoNameIsUnspecified) {
    QelHashClient::Initialise();
    Reply(kHashReply);
    Add("hips");
    EXPECT_EQ(Script().requests.front().substr(24, 26), Bytes("<Unspecified Application>\0"));
}

TEST_F(ProxyConversation, ALongApplicationNameIsCut) {
    QelHashClient::Initialise();
    QelHashClient::SetApplicationName(std::string(400, 'a').c_str());
    Reply(kHashReply);
    Add("hips");
    EXPECT_EQ(Script().requests.front().substr(24, 261), std::string(259, 'a') + Bytes("\0<"));
}

TEST_F(ProxyConversation, ACollisionGivesTheHashAndTheOtherString) {
    QelHashClient::Initialise();
    Reply(Bytes("\0\0\0\x80\x1A\0\0\0\x78\x56\x34\x12\4\0\0\0spine\0"));
    EXPECT_EQ(Add("hips"), QelHashResult::HashCollision);
    EXPECT_EQ(hash, 0x12345678u);
    EXPECT_STREQ(other.data(), "spine");
    Reply(Bytes("\0\0\0\x80\x1A\0\0\0\x78\x56\x34\x12\4\0\0\0spine\0"));
    EXPECT_EQ(Add("hips", 4), QelHashResult::HashCollision);
    EXPECT_STREQ(other.data(), "spi");
}

TEST_F(ProxyConversation, ACollidingStringEndsWithTheMessage) {
    QelHashClient::Initialise();
    Reply(Bytes("\0\0\0\x80\x1A\0\0\0\1\0\0\0\4\0\0\0spinexxxx"));
    Reply(Bytes("\0\0\0\x80\x1A\0\0\0\1\0\0\0\4\0\0\0chest"));
    EXPECT_EQ(Add("hips"), QelHashResult::HashCollision);
    EXPECT_EQ(Add("hips"), QelHashResult::HashCollision);
    EXPECT_STREQ(other.data(), "chest");
}

TEST_F(ProxyConversation, AMalformedReplyIsAnError) {
    QelHashClient::Initialise();
    const Strings replies{"",
                          Bytes("\0\0\0"),
                          Bytes("\5\0\0\0\x10\0\0\0\1\0\0\0\0\0\0\0"),
                          kHashReply.substr(0, 15),
                          Bytes("\0\0\0\x80\x10\0\0\0\1\0\0\0\4\0\0\0"),
                          Bytes("\0\0\0\x80\x10\0\0\0\1\0\0\0\xFF\xFF\xFF\xFF")};
    for (const std::string& reply : replies) {
        Reply(reply);
        EXPECT_EQ(Add("hips"), QelHashResult::ProxyError);
        EXPECT_EQ(hash, 0u);
        EXPECT_EQ(QelHashClient::GetFailureLocation(), 0);
    }
}

TEST_F(ProxyConversation, ARequestThatDoesNotFitIsRefused) {
    QelHashClient::Initialise();
    // Offsets, the two names, the category and the terminator take 80 of the 4096 bytes.
    EXPECT_EQ(Add(std::string(4017, 'a').c_str()), QelHashResult::IllegalArguments);
    EXPECT_TRUE(Script().requests.empty());
    Reply(kHashReply);
    EXPECT_EQ(Add(std::string(4016, 'a').c_str()), QelHashResult::Ok);
    EXPECT_EQ(Script().requests.front().size(), 4096u);
}

TEST_F(ProxyConversation, ABrokenPipeIsOpenedAgainAndTheRequestRepeated) {
    QelHashClient::Initialise();
    for (int i = 0; i < 4; ++i) Break(32);
    Reply(kHashReply);
    EXPECT_EQ(Add("hips"), QelHashResult::Ok);
    EXPECT_EQ(Script().requests.size(), 5u);
    EXPECT_EQ(Script().requests.front(), Script().requests.back());
    EXPECT_EQ(Script().CountCalls("Open"), 5);
    EXPECT_EQ(Script().CountCalls("Close"), 4);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 0);
}

TEST_F(ProxyConversation, FiveBrokenPipesUseTheRetriesUp) {
    QelHashClient::Initialise();
    for (std::uint32_t error = 101; error <= 105; ++error) Break(error);
    Reply(kHashReply);
    EXPECT_EQ(Add("hips"), QelHashResult::ProxyError);
    EXPECT_EQ(Script().requests.size(), 5u);
    EXPECT_EQ(Script().CountCalls("Open"), 6);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 262);
    EXPECT_EQ(QelHashClient::GetFailureError(), 105u);
}

TEST_F(ProxyConversation, AnotherErrorIsNotRetried) {
    QelHashClient::Initialise();
    Script().turns.push_back({Platform::PipeExchange::Failed, {}, 99});
    EXPECT_EQ(Add("hips"), QelHashResult::ProxyError);
    EXPECT_EQ(Script().requests.size(), 1u);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 254);
    EXPECT_EQ(QelHashClient::GetFailureError(), 99u);
    Reply(kHashReply);
    EXPECT_EQ(Add("hips"), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 0);
}

TEST_F(ProxyConversation, ARequestThatFailsLeavesNoHashAndNoOtherString) {
    QelHashClient::Initialise();
    Script().turns.push_back({Platform::PipeExchange::Failed, {}, 99});
    std::uint32_t given = 77;
    std::array<char, 4> text = {'o', 'l', 'd', '!'};
    EXPECT_EQ(QelHashClient::AddString("joint", "hips", given, text.data(), 4),
              QelHashResult::ProxyError);
    EXPECT_EQ(given, 0u);
    EXPECT_EQ(text, (std::array<char, 4>{}));
}

TEST_F(ProxyConversation, AReconnectionThatFailsEndsTheRetries) {
    QelHashClient::Initialise();
    Script().openErrors = {2};
    Break(32);
    EXPECT_EQ(Add("hips"), QelHashResult::ProxyError);
    EXPECT_EQ(Script().requests.size(), 1u);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 254);
    EXPECT_EQ(QelHashClient::GetFailureError(), static_cast<std::uint32_t>(EBADF));
}

TEST_F(ProxyConversation, ShutdownSaysGoodbyeAndClosesThePipe) {
    QelHashClient::Initialise();
    Reply(Bytes("\2\0\0\x80"));
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
    EXPECT_EQ(Script().requests, Strings{kShutdownRequest});
    EXPECT_EQ(Script().CountCalls("Close"), 1);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}

TEST_F(ProxyConversation, ShutdownTakesTheLibraryDownWhateverTheAnswer) {
    QelHashClient::Initialise();
    Reply(Bytes("\0\0\0\x80"));
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::ProxyError);
    QelHashClient::Initialise();
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::ProxyError);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 0);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}
