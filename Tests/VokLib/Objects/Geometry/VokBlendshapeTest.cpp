#include "VokLib/SceneTestTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Objects/Geometry/VokBlendTarget.h>
#include <VokLib/Objects/Geometry/VokBlendshape.h>
#include <VokLib/Objects/Geometry/VokBlendshapeController.h>
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

TEST(BlendTarget, ADiffPastTheLastIsOutOfRange) {
    Scene scene(R"(<blendtarget name="t"><diff name="d"/></blendtarget>)");
    VokBlendTarget& target = scene.First<VokBlendTarget>();
    EXPECT_EQ(target.GetDiff(0).name, "d");
    EXPECT_EQ(FailureOf([&] { target.GetDiff(1); }), (Failure{"Diff index out of range", "|t"}));
}

TEST(BlendTarget, WithoutDiffsItLoadsAndCannotBeWritten) {
    Scene scene(R"(<blendtarget name="t"/>)");
    const Failure none{"No diffs", "|t"};
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokBlendTarget>()); }), none);
    EXPECT_EQ(FailureOf([&] { scene.First<VokBlendTarget>().GetDiff(0); }), none);
}

TEST(BlendTarget, CountsThatLieAreFilledOrRefused) {
    Scene scene(R"(<blendtarget name="t"><diff name="d"><indices count="3">1</indices>
<deltas count="-1">1 2</deltas></diff></blendtarget>)");
    const VokBlendTarget::Diff& diff = scene.First<VokBlendTarget>().GetDiff(0);
    EXPECT_EQ(diff.indices, (std::vector<unsigned>{1, 0, 0}));
    EXPECT_TRUE(diff.deltas.empty());
}

TEST(BlendTarget, ACountBeyondTheDocumentIsRefused) {
    for (const char* list : {R"(<indices count="4000000000">1 2 3</indices>)",
                             R"(<deltas count="2000000000">1 2 3</deltas>)"})
        EXPECT_TRUE(LoadFailure(R"(<blendtarget name="t"><diff name="d">)" + std::string(list) +
                                "</diff></blendtarget>")
                        .text.starts_with("Counts in the document announce values"))
            << list;
}

TEST(BlendTarget, ListsOutsideADiffAreUnknown) {
    EXPECT_EQ(LoadFailure(R"(<blendtarget name="t"><indices count="0"/></blendtarget>)"),
              (Failure{"Unknown tag \"indices\"", "|t"}));
}

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
