#include <HashClient/QelHashClient.h>
#include <HashClient/QelHashClientUtil.h>
#include <QelTools/Exception.h>

#include <string>

#include "HashClient/FakeProxy.h"
#include "Platform/ScopedEnvironment.h"
#include "Support/ThrownText.h"

namespace {

class QelHashClientUtilProxy : public FakeProxyTest {};

const std::string kCollision("\0\0\0\x80\x1A\0\0\0\x78\x56\x34\x12\4\0\0\0spine\0", 22);

}  // namespace

TEST(QelHashClientUtil, AFailureTellsNoPlaceInTheSource) {
    try {
        QelHashClientUtil::AddString("joint", "a");
        FAIL() << "nothing was thrown";
    } catch (const QelTools::Common::Exception& failure) {
        EXPECT_EQ(failure.GetFile(), "");
        EXPECT_EQ(failure.GetLine(), "");
    }
}

TEST(QelHashClientUtil, GivesTheHash) {
    QelHashClientUtil::Initialise();
    QelHashClientUtil::SetApplicationName("test");
    EXPECT_EQ(QelHashClientUtil::AddString("joint", "joint"), 0x620A83F8u);
    QelHashClientUtil::Shutdown();
    QelHashClientUtil::Shutdown();
}

TEST(QelHashClientUtil, EachOperationPutsItsNameInFront) {
    EXPECT_EQ(
        ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::AddString("joint", "a"); }),
        "QelHashClientUtil::AddString : Library is not initialised");
    EXPECT_EQ(
        ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::SetApplicationName("a"); }),
        "QelHashClientUtil::SetApplicationName : Library is not initialised");
    QelHashClientUtil::Initialise();
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::Initialise(); }),
              "QelHashClientUtil::Initialise : Library is already initialised");
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>(
                  [] { QelHashClientUtil::AddString("joint", nullptr); }),
              "QelHashClientUtil::AddString : Function was passed illegal arguments");
    QelHashClientUtil::Shutdown();
}

TEST(QelHashClientUtil, AMissingProxyNamesThePlaceAndTheError) {
    const ScopedEnvironment server("QEL_HASH_SERVER_NAME", "server");
    const ScopedEnvironment path("PATH", "/nowhere");
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::Initialise(); }),
              "QelHashClientUtil::Initialise : Unable to spawn proxy process (58:2)");
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::Shutdown(); }),
              "QelHashClientUtil::Shutdown : General proxy communication error");
}

TEST_F(QelHashClientUtilProxy, APipeThatDoesNotOpenNamesThePlaceAndTheError) {
    Script().openErrors = {2};
    Script().waitErrors = {121};
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::Initialise(); }),
              "QelHashClientUtil::Initialise : Unable to connect to proxy process (141:121)");
}

TEST_F(QelHashClientUtilProxy, ACollisionNamesBothStringsAndTheCategory) {
    QelHashClientUtil::Initialise();
    Reply(kCollision);
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>(
                  [] { QelHashClientUtil::AddString("joint", "hips"); }),
              "QelHashClientUtil::AddString : Hash collision in category 'joint', between 'hips' "
              "and 'spine'.");
}

TEST_F(QelHashClientUtilProxy, ALongOtherStringIsCutAtItsBuffer) {
    QelHashClientUtil::Initialise();
    Reply(kCollision.substr(0, 16) + std::string(300, 'b') + '\0');
    EXPECT_EQ(
        ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::AddString("joint", "a"); }),
        "QelHashClientUtil::AddString : Hash collision in category 'joint', between 'a' and "
        "'" +
            std::string(255, 'b') + "'.");
}

TEST_F(QelHashClientUtilProxy, AFailureDuringTheRunNamesThePlaceAndTheError) {
    QelHashClientUtil::Initialise();
    Script().turns.push_back({Platform::PipeExchange::Failed, {}, 99});
    EXPECT_EQ(
        ThrownText<QelTools::Common::Exception>([] { QelHashClientUtil::AddString("joint", "a"); }),
        "QelHashClientUtil::AddString : General proxy communication error (254:99)");
}
