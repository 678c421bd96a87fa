#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktMakeWriteableHandler.h>
#include <VoktFramework/Saving/VoktSaveBiff.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"
#include "Support/ThrownText.h"

TEST(MakeWriteableHandler, AMissingFileIsFine) {
    const TemporaryFolder folder;
    std::unique_ptr<VoktMakeWriteableHandler> made;
    if (!VoktMakeWriteableHandler::Exists()) made = std::make_unique<VoktMakeWriteableHandler>();
    EXPECT_NO_THROW(VoktMakeWriteableHandler::Get().MakeWriteable(folder.Path("missing")));
}

TEST(MakeWriteableHandler, ARefusalNamesTheFile) {
    const TemporaryFolder folder;
    // On Windows a name below a file is one that is not there.
    const std::string refused =
        kIsWindows ? folder.Path("a*b") : folder.WriteFile("file", "") + "/x";
    std::unique_ptr<VoktMakeWriteableHandler> made;
    if (!VoktMakeWriteableHandler::Exists()) made = std::make_unique<VoktMakeWriteableHandler>();
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>(
                  [&] { VoktMakeWriteableHandler::Get().MakeWriteable(refused); }),
              "VoktMakeWriteableHandler failed to chmod " + refused);
}
