#include <VokLib/Objects/Nodes/VokQeliLocator.h>
#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokReference.h>
#include <VokLib/Tree/VokScene.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

using Files = std::vector<std::string>;

Files FilesOf(const VokObj& root) {
    VokDependencies files;
    CollectDependencies(root, files);
    return files.GetFiles();
}

/// Puts a mark in front of every name.
struct Marker : VokUpdateDependencies {
    void Translate(std::string& out, const std::string& name, const VokObj*) override {
        out = "new/" + name;
    }
};

}  // namespace

TEST(VokReference, WritesWhatItReads) {
    const std::string text = R"(<reference name="r" uri="a/b.qeli" namespace="ns" />)";
    EXPECT_EQ(Rewritten<VokReference>(text), text);
}

TEST(VokReference, WithoutNamespaceItIsWrittenWithAnEmptyOne) {
    EXPECT_EQ(Rewritten<VokReference>(R"(<reference name="r" uri="x"/>)"),
              R"(<reference name="r" uri="x" namespace="" />)");
}

TEST(VokReference, TheFileIsRequired) {
    EXPECT_EQ(LoadFailure(R"(<reference name="r" namespace="n"/>)"),
              (Failure{"Missing attribute in parse", "|r"}));
}

TEST(VokReference, TheFileIsListedAndRewrittenBeforeThatOfCustomData) {
    Scene scene(R"(<reference name="r" uri="a"><customData>
        <attribute name="f" type="filename">b</attribute></customData></reference>)");
    EXPECT_EQ(FilesOf(scene.First<VokReference>()), (Files{"a", "b"}));
    Marker marker;
    RewriteDependencies(scene.First<VokReference>(), marker);
    EXPECT_EQ(FilesOf(scene.First<VokReference>()), (Files{"new/a", "new/b"}));
    EXPECT_EQ(scene.First<VokReference>().uri, "new/a");
}

TEST(VokReference, AnEmptyFileIsNeitherListedNorRewritten) {
    Scene scene(R"(<reference name="r" uri=""/>)");
    EXPECT_EQ(FilesOf(scene.world), Files());
    Marker marker;
    RewriteDependencies(scene.world, marker);
    EXPECT_EQ(scene.First<VokReference>().uri, "");
}

TEST(VokInstance, WritesWhatItReads) {
    const std::string text = R"(<instance name="i" target="|s" />)";
    EXPECT_EQ(Rewritten<VokInstance>(R"(<scene name="s"/>)" + text), text);
}

TEST(VokInstance, TheTargetIsRequired) {
    EXPECT_EQ(LoadFailure(R"(<instance name="i"/>)"), (Failure{"Instance with no target.", "|i"}));
}

TEST(VokInstance, AnEmptyTargetIsNone) {
    Scene scene(R"(<instance name="i" target=""/>)");
    EXPECT_FALSE(scene.First<VokInstance>().target.IsValid());
    EXPECT_EQ(Write(scene.First<VokInstance>()), R"(<instance name="i" target="" />)");
}

TEST(VokLocator, WritesWhatItReads) {
    const std::string text =
        "<locator name=\"l\">\n<localPosition>1.0 2.0 3.0</localPosition>\n</locator>";
    EXPECT_EQ(Rewritten<VokLocator>(text), text);
}

TEST(VokLocator, ThePositionIsAlwaysWritten) {
    EXPECT_EQ(Rewritten<VokLocator>(R"(<locator name="l"/>)"),
              "<locator name=\"l\">\n<localPosition>0.0 0.0 0.0</localPosition>\n</locator>");
}

TEST(VokLocator, TheFourthElementOfThePositionIsACopyOfTheThird) {
    Scene scene(R"(<locator name="l"><localPosition>1 2 3</localPosition></locator>)");
    EXPECT_EQ(scene.First<VokLocator>().localPosition, (VokVector4{1, 2, 3, 3}));
}

TEST(VokQeliLocator, WritesWhatItReads) {
    const std::string text =
        "<qelilocator name=\"q\">\n<file uri=\"a.qeli\" />\n"
        "<localPosition>1.0 2.0 3.0</localPosition>\n</qelilocator>";
    EXPECT_EQ(Rewritten<VokQeliLocator>(text), text);
}

TEST(VokQeliLocator, AFileElementNeedsItsName) {
    EXPECT_EQ(LoadFailure(R"(<qelilocator name="q"><file/></qelilocator>)"),
              (Failure{"QeliLocator with no uri.", "|q"}));
    EXPECT_EQ(LoadFailure(R"(<qelilocator name="q"/>)"), Failure{});
}

TEST(VokQeliLocator, TheFileIsListedAndRewritten) {
    Scene scene(R"(<qelilocator name="q"><file uri="a"/><qelilocator name="empty"/>
        </qelilocator>)");
    EXPECT_EQ(FilesOf(scene.world), Files{"a"});
    Marker marker;
    RewriteDependencies(scene.world, marker);
    EXPECT_EQ(scene.First<VokQeliLocator>().uri, "new/a");
    EXPECT_EQ(scene.At<VokQeliLocator>("|q|empty").uri, "");
    EXPECT_TRUE(scene.First<VokQeliLocator>().IsA(VokLocator::TypeId()));
}
