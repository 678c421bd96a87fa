#include "VoktRigbake/RigbakeTestTools.h"

#include <HashClient/QelHashClient.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "../../../Libraries/HashClient/ProxyTransport.h"

namespace {

using namespace std::string_literals;

/// A proxy that starts, notes what it is asked, and fails.
class NotingProxy : public ProxyTransport {
  public:
    std::uint32_t Spawn(const char*) override { return 0; }
    bool Open(ProxyFailure&) override { return open = true; }
    void Close() override { open = false; }
    bool IsOpen() const override { return open; }
    std::uint32_t Handle() const override { return 0; }
    ProxyExchange Exchange(std::span<const char> request, std::span<char>, std::uint32_t&,
                           std::uint32_t& error) override {
        Requests().emplace_back(request.begin(), request.end());
        error = 5;
        return ProxyExchange::Failed;
    }

    static std::vector<std::string>& Requests() {
        static std::vector<std::string> requests;
        return requests;
    }

  private:
    bool open = false;
};

/// Puts the registry behind a noting proxy for as long as it lives.
class NotingRegistry {
  public:
    NotingRegistry() {
        NotingProxy::Requests().clear();
        Restart([]() -> std::unique_ptr<ProxyTransport> { return std::make_unique<NotingProxy>(); },
                "anything");
    }
    ~NotingRegistry() { Restart(nullptr, ""); }

  private:
    template <class Maker>
    static void Restart(Maker maker, const char* server) {
        QelHashClient::Shutdown();
        setenv("QEL_HASH_SERVER_NAME", server, 1);
        SetProxyTransportMaker(maker);
        QelHashClient::Initialise();
        QelHashClient::SetApplicationName("test");
    }
};

TEST(JointHash, TheRegistryIsAskedForJointsByTheirLowerCaseNames) {
    TestScene scene(R"(<scene><joint name="Ns:HIPS"/></scene>)");
    const NotingRegistry registry;
    EXPECT_THROW(scene.Build({"Ns:HIPS"}), QelTools::Common::Exception);
    ASSERT_FALSE(NotingProxy::Requests().empty());
    EXPECT_NE(NotingProxy::Requests().front().find("\0joint\0hips\0"s), std::string::npos);
}

}  // namespace
