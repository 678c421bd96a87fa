#include <VokLib/Objects/Animation/VokBlend.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(VokBlend, WritesWhatItReads) {
    const std::string text = R"(<blend name="b" target="||n" channel="rotateX">
<input value="1.5" weight="0.5" />
<input value="-2.0" weight="0.0" />
</blend>)";
    EXPECT_EQ(Rewritten<VokBlend>(text + R"(<scene><node name="n"/></scene>)"), text);
}

TEST(VokBlend, AWeightOfOneIsLeftOutAndReadsBackAsZero) {
    Scene scene(R"(<blend name="b"><input value="2" weight="1"/><input/></blend>)");
    const auto& blend = scene.First<VokBlend>();
    ASSERT_EQ(blend.inputs.size(), 2u);
    EXPECT_EQ(blend.inputs[0].weight, 1);
    EXPECT_EQ(blend.inputs[1].value, 0);
    EXPECT_EQ(blend.inputs[1].weight, 0);
    EXPECT_EQ(Write(blend), R"(<blend name="b" target="" channel="">
<input value="2.0" />
<input value="0.0" weight="0.0" />
</blend>)");
}

TEST(VokBlend, AWeightWithinAMillionthOfOneCountsAsOne) {
    Library library;
    VokBlend blend;
    blend.SetName("b");
    blend.inputs = {{0, 1 + 1e-6f}, {0, 1 + 2e-6f}, {0, 1 - 2e-6f}};
    EXPECT_EQ(Write(blend), R"(<blend name="b" target="" channel="">
<input value="0.0" />
<input value="0.0" weight="1.00000203" />
<input value="0.0" weight="9.99997973e-1" />
</blend>)");
}
