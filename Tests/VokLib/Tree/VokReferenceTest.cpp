#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokReference.h>

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
