#include <VokLib/Document/VokDocumentVersion.h>

#include "VokLib/Document/ParseTools.h"

using namespace ParseTools;

namespace {

class VokDocumentVersionTest : public ReaderTest {
  protected:
    VokDocumentVersion VersionOf(const std::string& document) {
        VokWorld world;
        parse.SetAllowUpdate(true);
        ThrownText([&] { Parse(parse, world, document); });
        return GetDocumentVersion(parse);
    }

    VokParse parse;
};

TEST_F(VokDocumentVersionTest, TheNumberIsWhatStandsBetweenRootAndEnd) {
    EXPECT_EQ(VokDocumentVersion{VersionNamespace("1_28_1")}.GetNumber(), "1_28_1");
    EXPECT_EQ(VokDocumentVersion{"http://other/qeli/1_0_4/qeli"}.GetNumber(),
              "http://other/qeli/1_0_4/qeli");
    EXPECT_EQ(VokDocumentVersion{VersionNamespace("")}.GetNumber(), VersionNamespace(""));
    EXPECT_EQ(VokDocumentVersion{}.GetNumber(), "");
}

TEST_F(VokDocumentVersionTest, ADocumentIsReadAsItIsOrUpdated) {
    const VokDocumentVersion current = VersionOf(Document("<scene/>"));
    EXPECT_EQ(current.name, VersionNamespace("1_28_1"));
    EXPECT_EQ(current.use, VokVersionUse::Current);
    update.compatible = true;
    const VokDocumentVersion compatible = VersionOf(Document("<scene/>", {.version = "1_27_3"}));
    EXPECT_EQ(compatible.name, VersionNamespace("1_27_3"));
    EXPECT_EQ(compatible.use, VokVersionUse::AsItIs);
    update.compatible = false;
    update.result = Document("<scene/>");
    const VokDocumentVersion old = VersionOf(Document("<scene/>", {.version = "1_8_0"}));
    EXPECT_EQ(old.name, VersionNamespace("1_8_0"));
    EXPECT_EQ(old.use, VokVersionUse::Updated);
}

TEST_F(VokDocumentVersionTest, ABadDocumentHasAVersionTooAndTheNextForgetsIt) {
    EXPECT_EQ(VersionOf(Document("<scene>", {.version = "1_8_0"})).name, VersionNamespace("1_8_0"));
    EXPECT_EQ(VersionOf("no document").name, "");
    EXPECT_EQ(VersionOf("no document").use, VokVersionUse::Current);
}

}  // namespace
