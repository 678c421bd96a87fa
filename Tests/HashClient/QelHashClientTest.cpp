#include <HashClient/QelHashClient.h>

#include <array>
#include <cerrno>
#include <string>

#include "HashClient/FakeProxy.h"
#include "Platform/ScopedEnvironment.h"

namespace {

struct Added {
    QelHashResult result;
    std::uint32_t hash = 1;
    std::array<char, 16> other;

    explicit Added(const char* string, const char* category = "joint") {
        other.fill('x');
        result = QelHashClient::AddString(category, string, hash, other.data(), 16);
    }
};

class LocalHash : public testing::Test {
  protected:
    LocalHash() { QelHashClient::Initialise(); }
    ~LocalHash() override { QelHashClient::Shutdown(); }
};

}  // namespace

TEST(QelHashClient, EveryResultHasItsText) {
    const auto text = [](int code) {
        return std::string(QelHashClient::GetResultText(static_cast<QelHashResult>(code)));
    };
    EXPECT_EQ(text(0), "No error");
    EXPECT_EQ(text(1), "Hash collision");
    EXPECT_EQ(text(2), "Hash unknown");
    EXPECT_EQ(text(3), "Library is not initialised");
    EXPECT_EQ(text(4), "Library is already initialised");
    EXPECT_EQ(text(5), "Unable to spawn proxy process");
    EXPECT_EQ(text(6), "Unable to connect to proxy process");
    EXPECT_EQ(text(7), "General proxy communication error");
    EXPECT_EQ(text(8), "Function was passed illegal arguments");
    EXPECT_EQ(text(9), "Unknown error");
    EXPECT_EQ(text(-1), "Unknown error");
}

TEST(QelHashClient, NeedsToBeInitialised) {
    EXPECT_EQ(Added("joint").result, QelHashResult::NotInitialised);
    EXPECT_EQ(Added(nullptr).result, QelHashResult::NotInitialised);
    EXPECT_EQ(QelHashClient::SetApplicationName("test"), QelHashResult::NotInitialised);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 0);
    EXPECT_EQ(QelHashClient::GetFailureError(), 0u);
}

TEST(QelHashClient, InitialisesOnceUntilItIsShutDown) {
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::AlreadyInitialised);
    EXPECT_EQ(QelHashClient::SetApplicationName("test"), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}

TEST(QelHashClient, AnEmptyServerNameMeansNoProxy) {
    const ScopedEnvironment server("QEL_HASH_SERVER_NAME", "");
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::Ok);
    EXPECT_EQ(Added("joint").hash, 0x620A83F8u);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}

TEST(QelHashClient, AProxyProgramThatIsMissingIsToldAndStaysUntilShutdown) {
    const ScopedEnvironment server("QEL_HASH_SERVER_NAME", "server");
    const ScopedEnvironment path("PATH", "/nowhere");
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::SpawnFailed);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 58);
    EXPECT_EQ(QelHashClient::GetFailureError(), static_cast<std::uint32_t>(ENOENT));
    EXPECT_EQ(QelHashClient::Initialise(), QelHashResult::AlreadyInitialised);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 58);
    EXPECT_EQ(Added("joint").result, QelHashResult::ProxyError);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 254);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::ProxyError);
    EXPECT_EQ(QelHashClient::GetFailureLocation(), 0);
    EXPECT_EQ(QelHashClient::Shutdown(), QelHashResult::Ok);
}

TEST_F(LocalHash, IsTheComplementOfTheCrc) {
    const Added added("joint");
    EXPECT_EQ(added.result, QelHashResult::Ok);
    EXPECT_EQ(added.hash, 0x620A83F8u);
    EXPECT_EQ(added.other, (std::array<char, 16>{}));
    EXPECT_EQ(Added("123456789").hash, 0x340BC6D9u);
}

TEST_F(LocalHash, OfTheEmptyStringIsAllOnes) {
    EXPECT_EQ(Added("").hash, 0xFFFFFFFFu);
}

TEST_F(LocalHash, TakesBytesAsUnsigned) {
    EXPECT_EQ(Added("\xE9").hash, 0xF42B4AAEu);
}

TEST_F(LocalHash, KnowsNoCategories) {
    EXPECT_EQ(Added("a", "x").hash, Added("a", "y").hash);
}

TEST_F(LocalHash, IllegalArgumentsAreRefused) {
    EXPECT_EQ(Added(nullptr).result, QelHashResult::IllegalArguments);
    EXPECT_EQ(Added("joint", nullptr).result, QelHashResult::IllegalArguments);
    std::uint32_t hash = 5;
    char other = 'x';
    EXPECT_EQ(QelHashClient::AddString("joint", "a", hash, nullptr, 1),
              QelHashResult::IllegalArguments);
    EXPECT_EQ(QelHashClient::AddString("joint", "a", hash, &other, 0),
              QelHashResult::IllegalArguments);
    EXPECT_EQ(QelHashClient::AddString("joint", "a", hash, &other, -1),
              QelHashResult::IllegalArguments);
    EXPECT_EQ(hash, 5u);
    EXPECT_EQ(other, 'x');
    EXPECT_EQ(QelHashClient::AddString("joint", "a", hash, &other, 1), QelHashResult::Ok);
    EXPECT_EQ(other, '\0');
}
