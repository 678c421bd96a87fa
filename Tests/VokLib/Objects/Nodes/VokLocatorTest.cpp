#include <VokLib/Objects/Nodes/VokLocator.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

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
