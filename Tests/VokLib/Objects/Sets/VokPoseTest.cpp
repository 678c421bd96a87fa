#include <VokLib/Objects/Sets/VokPose.h>
#include <VokLib/Tree/VokNode.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNode = R"(<scene><node name="n"/></scene>)";

}  // namespace

TEST(VokPose, WritesWhatItReads) {
    const std::string text = R"(<pose name="p" bindPose="1">
<element target="||n">
<translate>1.0 2.0 3.0</translate>
<rotEul rotOrd="zyx">4.0 5.0 6.0</rotEul>
<scale>7.0 8.0 9.0</scale>
</element>
<element target="">
<translate>0.0 0.0 0.0</translate>
<rotEul rotOrd="xyz">0.0 0.0 0.0</rotEul>
<scale>1.0 1.0 1.0</scale>
</element>
</pose>)";
    EXPECT_EQ(Rewritten<VokPose>(text + std::string(kNode)), text);
}

TEST(VokPose, AnElementWithoutPartsStandsAtTheOrigin) {
    Scene scene(R"(<pose name="p"><element/></pose>)");
    const auto& pose = scene.First<VokPose>();
    ASSERT_EQ(pose.GetElementCount(), 1u);
    EXPECT_EQ(pose.GetElement(0).translate, VokVector4{});
    EXPECT_EQ(pose.GetElement(0).rotation, EulerRotation{});
    EXPECT_EQ(pose.GetElement(0).scale, (VokVector3{1, 1, 1}));
    EXPECT_FALSE(pose.GetElement(0).target.IsValid());
}

TEST(VokPose, BindPoseIsANumberOtherThanZero) {
    Scene scene(R"(<pose name="a" bindPose="x"/><pose name="b" bindPose="0"/>
        <pose name="c" bindPose="2"/><pose name="d"/><pose name="e" bindPose="1x"/>)");
    EXPECT_FALSE(scene.At<VokPose>("|a").bindPose);
    EXPECT_FALSE(scene.At<VokPose>("|b").bindPose);
    EXPECT_TRUE(scene.At<VokPose>("|c").bindPose);
    EXPECT_FALSE(scene.At<VokPose>("|d").bindPose);
    EXPECT_TRUE(scene.At<VokPose>("|e").bindPose);
    EXPECT_EQ(Write(scene.At<VokPose>("|a")), "<pose name=\"a\">\n</pose>");
    EXPECT_EQ(Write(scene.At<VokPose>("|c")), "<pose name=\"c\" bindPose=\"1\">\n</pose>");
}

TEST(VokPose, AnUnknownOrderIsIgnored) {
    Scene scene(R"(<pose name="p"><element><rotEul rotOrd="?">1 2 3</rotEul></element></pose>)");
    EXPECT_EQ(scene.First<VokPose>().GetElement(0).rotation, (EulerRotation{1, 2, 3}));
}

TEST(VokPose, DataOutsideAnElementIsRefused) {
    for (const char* part : {"translate", "rotEul", "scale"}) {
        const std::string data = "<" + std::string(part) + ">1 2 3</" + part + ">";
        EXPECT_EQ(LoadFailure("<pose name=\"p\">" + data + "</pose>"),
                  (Failure{"No pose to receive data", "|p"}))
            << part;
        EXPECT_EQ(LoadFailure("<pose name=\"p\"><element/>" + data + "</pose>"),
                  (Failure{"No pose to receive data", "|p"}))
            << part;
    }
}

TEST(VokPose, AnIndexOutsideTheElementsIsRefused) {
    Scene scene(R"(<pose name="p"/>)");
    auto& pose = scene.First<VokPose>();
    const auto& same = pose;
    EXPECT_EQ(FailureOf([&] { pose.GetElement(0); }),
              (Failure{"Pose index is not in range.", "|p"}));
    EXPECT_EQ(FailureOf([&] { same.GetElement(0); }).text, "Pose index is not in range.");
}

TEST(VokPose, EachPartGoesToItsOwnElement) {
    Scene scene(
        R"(<pose name="p"><element><scale>1 2 3</scale><translate>4 5 6</translate></element>
        <element><translate>7 8 9</translate></element></pose>)");
    const auto& pose = scene.First<VokPose>();
    EXPECT_EQ(pose.GetElement(0).translate, (VokVector4{4, 5, 6, 6}));
    EXPECT_EQ(pose.GetElement(0).scale, (VokVector3{1, 2, 3}));
    EXPECT_EQ(pose.GetElement(1).translate, (VokVector4{7, 8, 9, 9}));
    EXPECT_EQ(pose.GetElement(1).scale, (VokVector3{1, 1, 1}));
}
