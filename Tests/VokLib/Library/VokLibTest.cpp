#include "VokLib/SceneTestTools.h"

#include <VokLib/CustomData/VokCustomAttribute.h>
#include <VokLib/Document/VokFilenameTranslator.h>
#include <VokLib/Document/VokUpdate.h>
#include <VokLib/Library/VokObjConvert.h>
#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokNode.h>

#include <libxml/parser.h>

#include <fstream>

using namespace SceneTest;

TEST(LibraryBringUp, EachServiceFollowsItsSwitch) {
    for (int service = 0; service < 5; ++service) {
        const auto on = [service](int index) { return index == service; };
        const VokLib library(on(0), on(1), on(2), on(3), on(4));
        EXPECT_EQ(VokFactory::FactoryCount() != 0, on(0));
        EXPECT_EQ(VokObjConvert::Exists(), on(1));
        EXPECT_EQ(HasCustomAttributeFactories(), on(2));
        EXPECT_EQ(FailureOf([] { GetPrimaryTranslator(); }).text == "", on(3));
        EXPECT_EQ(VokUpdate::Exists(), on(4));
        EXPECT_TRUE(VokObjLinkStore::Exists());
    }
}

TEST(LibraryBringUp, TearDownTakesEverythingAway) {
    { const VokLib library(true, true, true, true, true); }
    EXPECT_EQ(VokFactory::FactoryCount(), 0u);
    EXPECT_FALSE(VokObjConvert::Exists());
    EXPECT_FALSE(HasCustomAttributeFactories());
    EXPECT_FALSE(VokUpdate::Exists());
    EXPECT_FALSE(VokObjLinkStore::Exists());
    EXPECT_EQ(FailureOf([] { GetPrimaryTranslator(); }),
              Plain("No primary filename translator instance registered."));
}

TEST(LibraryBringUp, SecondLibraryIsRefusedAndLeavesTheFirstWhole) {
    const VokLib first(true, true, true, true, true);
    const std::size_t factories = VokFactory::FactoryCount();
    EXPECT_EQ(FailureOf([] { VokLib second(true, false, false, false, false); }),
              OfObject("Factory already registered for object name \"aimConstraint\""));
    EXPECT_EQ(VokFactory::FactoryCount(), factories);
    EXPECT_EQ(FailureOf([] { VokLib second(false, false, false, false, false); }).text,
              "QelTools::Common::Singleton<class VokObjLinkStore>::Singleton: we already have an "
              "instance");
    EXPECT_EQ(FailureOf([] { VokLib second(false, false, false, false, true); }).text,
              "QelTools::Common::Singleton<class VokUpdate>::Singleton: we already have an "
              "instance");
    EXPECT_TRUE(VokObjLinkStore::Exists());
    EXPECT_TRUE(VokUpdate::Exists());
}

TEST(LibraryBringUp, FailureInTheMiddleReleasesWhatWasUp) {
    VokFactory::RegisterFactory("translationConstraint",
                                [] { return static_cast<VokObj*>(nullptr); });
    EXPECT_EQ(FailureOf([] { VokLib library(true, true, true, true, true); }),
              OfObject("Factory already registered for object name \"translationConstraint\""));
    EXPECT_EQ(VokFactory::FactoryCount(), 1u);
    VokFactory::UnregisterFactory("translationConstraint");

    const VokObjLinkStore store;
    EXPECT_EQ(FailureOf([] { VokLib library(true, true, true, true, true); }).text,
              "QelTools::Common::Singleton<class VokObjLinkStore>::Singleton: we already have an "
              "instance");
    EXPECT_EQ(VokFactory::FactoryCount(), 0u);
    EXPECT_FALSE(HasCustomAttributeFactories());
    EXPECT_FALSE(VokUpdate::Exists());
    EXPECT_FALSE(VokObjConvert::Exists());
    EXPECT_TRUE(VokObjLinkStore::Exists());
}

TEST(LibraryBringUp, TellsWhetherALinkOutlivedTheStore) {
    { const VokLib library(false, false, false, false, false); }
    EXPECT_TRUE(VokObjLinkStore::WasEmptyAtDestruction());

    auto target = std::make_unique<VokNode>();
    auto library = std::make_unique<VokLib>(false, false, false, false, false);
    VokObjLinkHandle handle(nullptr);
    handle.SetTarget(target.get());
    library.reset();
    EXPECT_FALSE(VokObjLinkStore::WasEmptyAtDestruction());
    EXPECT_FALSE(handle.IsValid());
    target.reset();
}

TEST(LibraryBringUp, ParserLibraryReplacesEntitiesAndOpensNothing) {
    const std::string outside = testing::TempDir() + "rigbake_outside.txt";
    std::ofstream(outside) << "secret";
    const VokLib library(false, false, false, false, false);
    const std::string text = "<!DOCTYPE a [<!ENTITY in 'known'><!ENTITY out SYSTEM \"" + outside +
                             "\">]><a>&in;&out;</a>";
    testing::internal::CaptureStderr();
    xmlDoc* document = xmlParseMemory(text.data(), static_cast<int>(text.size()));
    EXPECT_EQ(xmlParseMemory("<a", 2), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    if (document != nullptr) {
        xmlChar* content = xmlNodeGetContent(xmlDocGetRootElement(document));
        EXPECT_STREQ(reinterpret_cast<const char*>(content), "known");
        xmlFree(content);
        xmlFreeDoc(document);
    }
    std::remove(outside.c_str());
}

TEST(LibraryBringUp, TellsItsVersion) {
    EXPECT_STREQ(kVokLibVersion, "1.28.3");
}
