#include "VokLib/SceneTestTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Objects/Geometry/VokMultiBlendTarget.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

constexpr const char* kController = R"(<blendshapeController name="c"/>)";
constexpr std::string_view kTarget =
    "<blendtarget name=\"t\">\n<diff name=\"position\">\n<indices count=\"2\">0 "
    "4294967295</indices>\n<deltas count=\"6\">1.0 2.0 3.0 -1.0 -2.0 -3.0</deltas>\n</diff>\n"
    "<diff name=\"normal\">\n<indices count=\"0\">\n</indices>\n<deltas "
    "count=\"0\">\n</deltas>\n</diff>\n<node name=\"n\">\n</node>\n</blendtarget>";

TEST(MultiBlendTarget, AStageNeedsItsInterpolant) {
    EXPECT_EQ(LoadFailure(R"(<multiBlendTarget name="m"><blendStage/></multiBlendTarget>)"),
              (Failure{"Missing attribute in parse", "|m"}));
}

TEST(MultiBlendTarget, StagesAreReadByIndex) {
    Scene scene("<multiBlendTarget name=\"m\"><blendStage interpolant=\"0.75\">" +
                std::string(kTarget) + "</blendStage></multiBlendTarget>");
    const VokMultiBlendTarget& target = scene.First<VokMultiBlendTarget>();
    EXPECT_EQ(target.GetStage(0).interpolant, 0.75f);
    EXPECT_EQ(target.GetStage(0).target->GetName(), "t");
    EXPECT_EQ(FailureOf([&] { target.GetStage(1); }),
              (Failure{"Out of range blend target stage index.", "|m"}));
}

TEST(MultiBlendTarget, OneTargetStandsInAStage) {
    EXPECT_EQ(
        LoadFailure(
            R"(<multiBlendTarget name="m"><blendStage interpolant="1"><node name="n"/></blendStage></multiBlendTarget>)"),
        (Failure{"Failed to find factory to instantiate blend target stage of type node", "|m"}));
    EXPECT_EQ(
        LoadFailure(
            R"(<multiBlendTarget name="m"><blendStage interpolant="1"><blendtarget name="a"/><blendtarget name="b"/></blendStage></multiBlendTarget>)"),
        (Failure{"Internal error in blendshape parse", "|m"}));
    Scene scene(R"(<multiBlendTarget name="m"><blendStage interpolant="1"/></multiBlendTarget>)");
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokMultiBlendTarget>()); }),
              (Failure{"Blend target entry is NULL", "|m"}));
}

TEST(MultiBlendTarget, WithoutStagesItIsEmpty) {
    EXPECT_EQ(Rewritten<VokMultiBlendTarget>(R"(<multiBlendTarget name="m"/>)"),
              "<multiBlendTarget name=\"m\">\n</multiBlendTarget>");
}

/// `levels` times `open`, the innermost target, and as many times `close`.
std::string Nested(int levels, std::string_view open, std::string_view close) {
    std::string text;
    for (int i = 0; i < levels; ++i) text += open;
    text += R"(<blendtarget name="t"><diff name="d"/></blendtarget>)";
    for (int i = 0; i < levels; ++i) text += close;
    return text;
}

constexpr const char* kTooDeep =
    "Blend targets and blind data are nested too deep: at most 256 may stand in one another.";

TEST(MultiBlendTarget, NestingIsLimited) {
    constexpr auto open = R"(<multiBlendTarget name="m"><blendStage interpolant="0">)";
    constexpr auto close = "</blendStage></multiBlendTarget>";
    {
        Scene scene(Nested(VokLimits::kMaxHeldDepth, open, close));
        EXPECT_FALSE(Write(scene.First<VokMultiBlendTarget>()).empty());
    }
    EXPECT_EQ(LoadFailure(Nested(VokLimits::kMaxHeldDepth + 1, open, close)).text, kTooDeep);
}

}  // namespace

}  // namespace SceneTest
