#include <VokLib/Objects/Nodes/VokLodGroup.h>
#include <VokLib/Tree/VokScene.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(VokLodGroup, WritesWhatItReads) {
    const std::string text = R"(<lodgroup name="l" parentEffect="noInherit">
<thresholds count="3">1.0 2.0 4.0</thresholds>
<translate>1.0 2.0 3.0</translate>
</lodgroup>)";
    EXPECT_EQ(Rewritten<VokLodGroup>(text), text);
}

TEST(VokLodGroup, WithoutThresholdsItWritesACountOfZero) {
    EXPECT_EQ(Rewritten<VokLodGroup>(R"(<lodgroup name="l"/>)"),
              "<lodgroup name=\"l\">\n<thresholds count=\"0\">\n</thresholds>\n</lodgroup>");
}

TEST(VokLodGroup, TheCountIsRequiredAndLimitsTheText) {
    EXPECT_EQ(LoadFailure(R"(<lodgroup name="l"><thresholds>1 2</thresholds></lodgroup>)"),
              (Failure{"Missing attribute in parse", "|l"}));
    Scene scene(R"(<lodgroup name="a"><thresholds count="1">1 2</thresholds></lodgroup>
        <lodgroup name="b"><thresholds count="3">1 2</thresholds></lodgroup>
        <lodgroup name="c"><thresholds count="-1">1 2</thresholds></lodgroup>)");
    EXPECT_EQ(scene.At<VokLodGroup>("|a").thresholds, (std::vector<float>{1}));
    EXPECT_EQ(scene.At<VokLodGroup>("|b").thresholds, (std::vector<float>{1, 2, 0}));
    EXPECT_EQ(scene.At<VokLodGroup>("|c").thresholds, std::vector<float>());
}

TEST(VokLodGroup, ACountIsAClaim) {
    EXPECT_NE(LoadFailure(
                  R"(<lodgroup name="l"><thresholds count="2147483647">1</thresholds></lodgroup>)")
                  .text,
              "");
}

TEST(VokLodGroup, IsANode) {
    Library library;
    EXPECT_TRUE(VokLodGroup().IsA(VokNode::TypeId()));
    EXPECT_TRUE(VokScene().IsA(VokNode::TypeId()));
    EXPECT_FALSE(VokScene().IsA(VokLodGroup::TypeId()));
}
