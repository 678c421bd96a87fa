#include <VokLib/Objects/Sets/VokRigidBody.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNode = R"(<scene><node name="n"/></scene>)";

}  // namespace

TEST(VokRigidBody, WritesWhatItReads) {
    const std::string text =
        "<rigidBody name=\"r\">\n<mass>2.5</mass>\n<geometry>||n</geometry>\n</rigidBody>";
    EXPECT_EQ(Rewritten<VokRigidBody>(text + std::string(kNode)), text);
}

TEST(VokRigidBody, BothElementsAreAlwaysWritten) {
    EXPECT_EQ(Rewritten<VokRigidBody>(R"(<rigidBody name="r"/>)"),
              "<rigidBody name=\"r\">\n<mass>0.0</mass>\n<geometry></geometry>\n</rigidBody>");
}
