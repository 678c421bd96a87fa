#include "Support/ThisSystem.h"
#include "VokLib/Document/ParseTools.h"

#include <QelTools/Exception.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokReference.h>
#include <VokLib/Tree/VokScene.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace ParseTools;

namespace {

class ParseVersion : public ReaderTest {
  protected:
    std::string Load(const std::string& document) {
        parse.SetAllowUpdate(true);
        return ThrownText([&] { ParseTools::Parse(parse, world, document, "old.qeli"); });
    }

    VokWorld world;
    VokParse parse;
};

TEST_F(ParseVersion, OldDocumentIsRefusedUnlessUpdateIsAllowed) {
    EXPECT_EQ(LoadText(Document("", {.version = "1_27_3"})),
              ".qeli instance is not the correct version. Expected version namespace of "
              "\"http://qel.example/ns/qeli/1_28_1/qeli\" but got "
              "\"http://qel.example/ns/qeli/1_27_3/qeli\".");
    EXPECT_EQ(update.asked, "");
}

TEST_F(ParseVersion, RootOfAnotherNameHasNoVersion) {
    const std::string document = std::string("<WORLD xmlns='") + QelCurrentNamespace + "'/>";
    EXPECT_EQ(LoadText(document),
              ".qeli instance is not the correct version. Expected version namespace of "
              "\"http://qel.example/ns/qeli/1_28_1/qeli\" but got \"\".");
    EXPECT_EQ(Load(document), "Failed to extract version information from .qeli file.");
}

TEST_F(ParseVersion, RootWithoutADefaultNamespaceHasNoVersion) {
    update.compatible = true;
    EXPECT_EQ(Load("<QEL xmlns:a='b'/>"), "Failed to extract version information from .qeli file.");
}

TEST_F(ParseVersion, FirstElementOfTheRootsNameGivesTheVersionAtAnyDepth) {
    const std::string document =
        std::string("<a><QEL xmlns='") + QelCurrentNamespace + "'/><QEL xmlns='x'/></a>";
    EXPECT_EQ(ThrownText([&] { ParseTools::Parse(parse, world, document); }), "");
}

TEST_F(ParseVersion, CompatibleDocumentIsReadAsItStands) {
    update.compatible = true;
    EXPECT_EQ(Load(Document("<scene><joint name='j'/></scene>", {.version = "1_27_3"})), "");
    EXPECT_EQ(update.asked, VersionNamespace("1_27_3"));
    EXPECT_EQ(update.received, "");
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
}

TEST_F(ParseVersion, OutdatedDocumentIsReadFromWhatTheUpdateWrites) {
    update.result = Document("<scene><joint name='new'/></scene>");
    const std::string old =
        Document("<scene><joint name='old'><gone/></joint></scene>", {.version = "1_10_0"});
    EXPECT_EQ(Load(old), "");
    EXPECT_EQ(update.received, old);
    EXPECT_TRUE(update.isFreed);
    ASSERT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
    EXPECT_EQ(world.GetHierarchy()->GetChild(0)->GetName(), "new");
}

TEST_F(ParseVersion, OutdatedDocumentIsCollectedBlockByBlock) {
    update.result = Document("<scene><joint name='new'/></scene>");
    const std::string old = Document(std::string(5000, ' '), {.version = "1_10_0"});
    parse.SetAllowUpdate(true);
    ParseInBlocks(parse, world, old, 1000);
    EXPECT_EQ(update.received, old);
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
}

TEST_F(ParseVersion, UpdatedDocumentOfSeveralBlocksStreamsThrough) {
    std::string contents = "<scene>";
    for (int i = 0; i < 40000; ++i)
        contents += "<joint name='joint" + std::to_string(i) +
                    "'><translate>1.0 2.0 3.0</translate></joint>";
    update.result = Document(contents + "</scene>");
    ASSERT_GT(update.result.size(), 2u << 20);
    EXPECT_EQ(Load(Document("", {.version = "1_10_0"})), "");
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 40000u);
}

TEST_F(ParseVersion, FaultInAnUpdatedDocumentTellsItsPlaceThere) {
    update.result = Document("<scene></a>");
    EXPECT_EQ(Load(Document("", {.version = "1_10_0"})),
              "Libxml2 parse error: 76 in \"old.qeli\" Line 3 Column 12");
}

TEST_F(ParseVersion, UpdateThatWritesNothingLeavesTheLastBlockToTheReader) {
    EXPECT_EQ(Load(Document("<scene><joint name='old'/></scene>", {.version = "1_10_0"})), "");
    EXPECT_EQ(world.GetHierarchy()->GetChildCount(), 1u);
}

TEST_F(ParseVersion, FileNamesOfAnotherFormAreTurnedIntoThePrimaryForm) {
    const std::string root = std::filesystem::current_path().root_name().string();
    EXPECT_EQ(ThrownText([&] {
                  ParseTools::Parse(parse, world,
                                    Document("<reference name='r' uri='" + root +
                                                 "/assets/props/sword.qeli' namespace='s'/>",
                                             {.form = "absolute"}),
                                    "/assets/rigs/hero.qeli");
              }),
              "");
    EXPECT_EQ(vok_cast<VokReference>(world.GetChild(1))->uri, "../props/sword.qeli");
}

class ParseLinks : public ParseVersion {
  protected:
    static std::string Linked(std::string_view path, std::string_view version = "1_28_1") {
        return Document("<objset name='set'><member path='" + std::string(path) + "'/></objset>",
                        {.version = version});
    }
};

}  // namespace
