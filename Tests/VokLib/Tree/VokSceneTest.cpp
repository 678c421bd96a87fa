#include <VokLib/Tree/VokScene.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

TEST(VokScene, ANamedSceneTakesTheElementsOfANode) {
    const std::string text = R"(<scene name="s" parentEffect="noInherit">
<translate>1.0 2.0 3.0</translate>
<node name="n">
</node>
</scene>)";
    Scene scene(text);
    EXPECT_EQ(Write(scene.At<VokScene>("|s")), text);
}

TEST(VokScene, TheHierarchyHasNoNameAttribute) {
    Scene scene(R"(<scene><translate>1 2 3</translate></scene>)");
    EXPECT_EQ(Write(*scene.world.GetHierarchy()),
              "<scene>\n<translate>1.0 2.0 3.0</translate>\n</scene>");
}
