#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokBlendshapeController.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(BlendshapeController, RoundTripsWhole) {
    const std::string controller =
        "<blendshapeController name=\"c\">\n<weight weightName=\"smile &amp; wink\">0.5</weight>\n"
        "<weight weightName=\"\">-1.0</weight>\n<node name=\"n\">\n</node>\n"
        "</blendshapeController>";
    EXPECT_EQ(Rewritten<VokBlendshapeController>(controller), controller);
}

TEST(BlendshapeController, AWeightWithoutNameAndTextIsZero) {
    EXPECT_EQ(Rewritten<VokBlendshapeController>(
                  R"(<blendshapeController name="c"><weight/></blendshapeController>)"),
              "<blendshapeController name=\"c\">\n<weight weightName=\"\">0.0</weight>\n"
              "</blendshapeController>");
    EXPECT_EQ(Rewritten<VokBlendshapeController>(R"(<blendshapeController name="c"/>)"),
              "<blendshapeController name=\"c\">\n</blendshapeController>");
}

}  // namespace

}  // namespace SceneTest
