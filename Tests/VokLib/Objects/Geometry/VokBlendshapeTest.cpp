#include "VokLib/SceneTestTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Objects/Geometry/VokBlendshape.h>
#include <VokLib/Objects/Geometry/VokBlendshapeController.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

constexpr const char* kController = R"(<blendshapeController name="c"/>)";
constexpr std::string_view kTarget =
    "<blendtarget name=\"t\">\n<diff name=\"position\">\n<indices count=\"2\">0 "
    "4294967295</indices>\n<deltas count=\"6\">1.0 2.0 3.0 -1.0 -2.0 -3.0</deltas>\n</diff>\n"
    "<diff name=\"normal\">\n<indices count=\"0\">\n</indices>\n<deltas "
    "count=\"0\">\n</deltas>\n</diff>\n<node name=\"n\">\n</node>\n</blendtarget>";

TEST(Blendshape, RoundTripsWhole) {
    const std::string shape =
        "<blendshape name=\"s\" controller=\"|c\">\n<target weightIndex=\"3\">\n" +
        std::string(kTarget) +
        "\n</target>\n<target weightIndex=\"4294967295\">\n<multiBlendTarget name=\"m\">\n"
        "<blendStage interpolant=\"0.5\">\n" +
        std::string(kTarget) +
        "\n</blendStage>\n<blendStage interpolant=\"1.0\">\n<multiBlendTarget name=\"inner\">\n"
        "<blendStage interpolant=\"-0.25\">\n" +
        std::string(kTarget) +
        "\n</blendStage>\n</multiBlendTarget>\n</blendStage>\n<node name=\"n\">\n</node>\n"
        "</multiBlendTarget>\n</target>\n<node name=\"child\">\n</node>\n<customData>\n"
        "<attribute name=\"k\" type=\"string\">v</attribute>\n</customData>\n</blendshape>";
    EXPECT_EQ(Rewritten<VokBlendshape>(kController + shape), shape);
}

TEST(Blendshape, ItsTargetsAreNoChildren) {
    Scene scene(std::string(kController) +
                "<blendshape name=\"s\" controller=\"|c\"><target weightIndex=\"1\">" +
                std::string(kTarget) + "</target><blendtarget name=\"child\"/></blendshape>");
    const VokBlendshape& shape = scene.First<VokBlendshape>();
    EXPECT_EQ(shape.controller.GetTarget(), &scene.First<VokBlendshapeController>());
    ASSERT_EQ(shape.GetTargetCount(), 1u);
    EXPECT_EQ(shape.GetTarget(0).weightIndex, 1u);
    EXPECT_EQ(shape.GetTarget(0).stage->GetName(), "t");
    ASSERT_EQ(shape.GetChildCount(), 1u);
    EXPECT_EQ(shape.GetChild(0)->GetName(), "child");
}

TEST(Blendshape, ATargetPastTheLastIsOutOfRange) {
    Scene scene("<blendshape name=\"s\"><target>" + std::string(kTarget) +
                "</target></blendshape>");
    EXPECT_EQ(scene.First<VokBlendshape>().GetTarget(0).weightIndex, 0u);
    EXPECT_EQ(FailureOf([&] { scene.First<VokBlendshape>().GetTarget(1); }),
              (Failure{"Weight index out of range", "|s"}));
}

TEST(Blendshape, WithoutTargetsItLoadsAndCannotBeWritten) {
    Scene scene(R"(<blendshape name="s" controller=""/>)");
    const Failure none{"No blend targets", "|s"};
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokBlendshape>()); }), none);
    EXPECT_EQ(FailureOf([&] { scene.First<VokBlendshape>().GetTarget(0); }), none);
}

TEST(Blendshape, AnEmptyTargetCannotBeWritten) {
    Scene scene(R"(<blendshape name="s"><target weightIndex="0"/></blendshape>)");
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokBlendshape>()); }),
              (Failure{"Blend target entry is NULL", "|s"}));
}

TEST(Blendshape, OnlyBlendTargetsStandInATarget) {
    const auto failure = [](std::string_view stage) {
        return LoadFailure(R"(<blendshape name="s"><target weightIndex="0">)" + std::string(stage) +
                           "</target></blendshape>");
    };
    const std::string text = "Failed to find factory to instantiate blend target stage of type ";
    EXPECT_EQ(failure(R"(<nothing name="x"/>)"), (Failure{text + "nothing", "|s"}));
    EXPECT_EQ(failure(R"(<node name="x"/>)"), (Failure{text + "node", "|s"}));
    EXPECT_EQ(failure(R"(<customData/>)"), (Failure{text + "customData", "|s"}));
    EXPECT_EQ(failure(R"(<target weightIndex="0"/>)"), (Failure{text + "target", "|s"}));
    EXPECT_EQ(failure(R"(<blendtarget name="a"/><blendtarget name="b"/>)"),
              (Failure{"Internal error in blendshape parse", "|s"}));
    EXPECT_EQ(failure(R"(<blendtarget/>)").text, "Missing attribute in parse");
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

TEST(Blendshape, NestingIsLimitedThroughChildrenOfTargetsToo) {
    constexpr auto open = R"(<blendshape name="s"><target><blendtarget name="b"><diff name="d"/>)"
                          R"(<node name="n">)";
    constexpr auto close = "</node></blendtarget></target></blendshape>";
    {
        Scene scene(Nested(VokLimits::kMaxHeldDepth, open, close));
        EXPECT_FALSE(Write(scene.First<VokBlendshape>()).empty());
    }
    EXPECT_EQ(LoadFailure(Nested(VokLimits::kMaxHeldDepth + 1, open, close)).text, kTooDeep);
}

}  // namespace

}  // namespace SceneTest
