#include <VokLib/Objects/Nodes/VokQeliLocator.h>
#include <VokLib/Tree/VokDependencies.h>

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
