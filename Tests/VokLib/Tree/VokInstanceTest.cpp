#include <VokLib/Tree/VokInstance.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

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
