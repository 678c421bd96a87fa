#include "HashClient/NotingProxy.h"
#include "VoktRigbake/RigbakeTestTools.h"

#include <HashClient/QelHashClient.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace std::string_literals;

/// Puts the registry behind a noting proxy for as long as it lives.
class NotingRegistry {
  public:
    NotingRegistry() { Restart("anything"); }
    ~NotingRegistry() { Restart(""); }

  private:
    static void Restart(const char* server) {
        QelHashClient::Shutdown();
        setenv("QEL_HASH_SERVER_NAME", server, 1);
        QelHashClient::Initialise();
        QelHashClient::SetApplicationName("test");
    }

    NotingProxies proxies;
};

TEST(JointHash, TheRegistryIsAskedForJointsByTheirLowerCaseNames) {
    TestScene scene(R"(<scene><joint name="Ns:HIPS"/></scene>)");
    const NotingRegistry registry;
    EXPECT_THROW(scene.Build({"Ns:HIPS"}), QelTools::Common::Exception);
    ASSERT_FALSE(NotingProxy::Requests().empty());
    EXPECT_NE(NotingProxy::Requests().front().find("\0joint\0hips\0"s), std::string::npos);
}

}  // namespace
