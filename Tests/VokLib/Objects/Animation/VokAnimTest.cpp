#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(VokAnim, WritesWhatItReads) {
    const std::string text =
        "<anim name=\"a\" target=\"||n\">\n<anim name=\"b\" target=\"\">\n</anim>\n</anim>";
    EXPECT_EQ(Rewritten<VokAnim>(text + R"(<scene><node name="n"/></scene>)"), text);
}

TEST(VokAnim, TheTargetIsRequired) {
    EXPECT_EQ(LoadFailure(R"(<anim name="a"/>)"), (Failure{"Missing attribute in parse", "|a"}));
}

TEST(VokAnim, OnlyChannelsAreCountedAndFound) {
    Scene scene(R"(<anim name="a" target=""><node name="x"/><animChannel name="c0"/>
        <blend name="y"/><animChannel name="c1"/></anim>)");
    const auto& anim = scene.First<VokAnim>();
    EXPECT_EQ(anim.GetChannelCount(), 2u);
    EXPECT_EQ(anim.GetChannel(0).GetName(), "c0");
    EXPECT_EQ(anim.GetChannel(1).GetName(), "c1");
    EXPECT_EQ(FailureOf([&] { anim.GetChannel(2); }),
              (Failure{"Out of range index for anim channel.", "|a"}));
}

TEST(VokAnim, ATargetThatIsGoneIsWrittenAsAnEmptyPath) {
    Scene scene(R"(<scene><node name="n"/></scene><anim name="a" target="||n"/>)");
    scene.world.GetHierarchy()->DeleteChild(scene.world.GetHierarchy()->FindChild("n"));
    EXPECT_EQ(Write(scene.First<VokAnim>()), "<anim name=\"a\" target=\"\">\n</anim>");
}
