#include <HashClient/QelHashClient.h>
#include <HashClient/QelHashClientUtil.h>
#include <Platform/OwnProgram.h>
#include <QelTools/Crc32.h>
#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Stages/VoktHashClient.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "HashClient/NotingProxy.h"
#include "Support/ThrownText.h"

namespace {

// The proxy's environment for one test; what was there before comes back.
class HashServerName {
  public:
    explicit HashServerName(const char* value) {
        if (const char* old = std::getenv(kName)) before = old;
        Set(value);
    }
    ~HashServerName() { Set(before ? before->c_str() : nullptr); }

  private:
    static constexpr const char* kName = "QEL_HASH_SERVER_NAME";
    static void Set(const char* value) {
        if (value != nullptr) {
            setenv(kName, value, 1);
        } else {
            unsetenv(kName);
        }
    }
    std::optional<std::string> before;
};

// No program is found while it lives.
class EmptyPath {
  public:
    EmptyPath() { setenv("PATH", "/nowhere", 1); }
    ~EmptyPath() { setenv("PATH", before.c_str(), 1); }

  private:
    std::string before = std::getenv("PATH");
};

bool IsUp() {
    std::uint32_t hash = 0;
    return QelHashClient::AddString("category", "text", hash, nullptr, 0) !=
           QelHashResult::NotInitialised;
}

}  // namespace

TEST(HashClientComponent, WithoutAServerHashesAreMadeHere) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        const HashServerName server(name);
        VoktUniverse universe;
        VoktHashClient component;
        component.Process(universe);
        EXPECT_TRUE(IsUp());
        EXPECT_EQ(QelHashClientUtil::AddString("joint", "joint"),
                  ~QelTools::Common::Crc32("joint"));
    }
    EXPECT_FALSE(IsUp());
}

TEST(HashClientComponent, TheLibraryStaysUpUntilTheComponentGoes) {
    const HashServerName server(nullptr);
    EXPECT_FALSE(IsUp());
    {
        VoktUniverse universe;
        VoktHashClient component;
        EXPECT_FALSE(IsUp());
        component.Process(universe);
        EXPECT_TRUE(IsUp());
    }
    EXPECT_FALSE(IsUp());
}

TEST(HashClientComponent, AComponentThatDidNotRunLeavesTheLibraryAlone) {
    const HashServerName server(nullptr);
    QelHashClientUtil::Initialise();
    { const VoktHashClient component; }
    EXPECT_TRUE(IsUp());
    QelHashClientUtil::Shutdown();
}

TEST(HashClientComponent, ASecondComponentFindsTheLibraryTaken) {
    const HashServerName server(nullptr);
    VoktUniverse universe;
    VoktHashClient first;
    first.Process(universe);
    {
        VoktHashClient second;
        const std::string text =
            ThrownText<QelTools::Common::Exception>([&] { second.Process(universe); });
        EXPECT_EQ(text.substr(0, 32), "QelHashClientUtil::Initialise : ");
    }
    // It was not the second that brought the library up.
    EXPECT_TRUE(IsUp());
}

TEST(HashClientComponent, AProxyThatIsNotThereEndsTheStage) {
    const HashServerName server("nowhere");
    const EmptyPath path;
    VoktUniverse universe;
    VoktHashClient component;
    const std::string text =
        ThrownText<QelTools::Common::Exception>([&] { component.Process(universe); });
    EXPECT_EQ(text.substr(0, 67),
              "QelHashClientUtil::Initialise : Unable to spawn proxy process (58:2");
    QelHashClient::Shutdown();
}

TEST(HashClientComponent, TheLibraryGoesDownBehindAFailedRunToo) {
    const HashServerName server(nullptr);
    try {
        VoktUniverse universe;
        VoktHashClient component;
        component.Process(universe);
        throw std::runtime_error("a later stage");
    } catch (const std::runtime_error&) {
        EXPECT_FALSE(IsUp());
    }
}

TEST(HashClientComponent, RequestsCarryTheProgramsNameWithoutItsFolder) {
    const HashServerName server("anything");
    const NotingProxies proxies;
    VoktUniverse universe;
    auto component = std::make_unique<VoktHashClient>();
    component->Process(universe);
    EXPECT_THROW(QelHashClientUtil::AddString("joint", "a"), QelTools::Common::Exception);
    constexpr std::size_t kFirstString = 24;
    const std::string program =
        std::filesystem::path(Platform::OwnProgramFile()).filename().string();
    EXPECT_EQ(NotingProxy::Requests().front().substr(kFirstString, program.size() + 1),
              program + std::string(1, '\0'));
    EXPECT_THROW(delete component.release(), QelTools::Common::Exception);
}

TEST(HashClientComponent, AGoodbyeThatFailsLeavesTheDestructor) {
    const HashServerName server("anything");
    const NotingProxies proxies;
    VoktUniverse universe;
    auto component = std::make_unique<VoktHashClient>();
    component->Process(universe);
    // The way to the proxy is gone by then, and with it the place of its failure.
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([&] { delete component.release(); }),
              "QelHashClientUtil::Shutdown : General proxy communication error");
    EXPECT_FALSE(IsUp());
}

TEST(HashClientComponent, AGoodbyeThatFailsDoesNotHideAnEarlierFailure) {
    const HashServerName server("anything");
    const NotingProxies proxies;
    EXPECT_EQ(ThrownText<std::runtime_error>([] {
                  VoktUniverse universe;
                  VoktHashClient component;
                  component.Process(universe);
                  throw std::runtime_error("a later stage");
              }),
              "a later stage");
    EXPECT_FALSE(IsUp());
}
