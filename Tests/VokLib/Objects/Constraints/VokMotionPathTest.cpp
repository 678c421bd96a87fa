#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Objects/Constraints/VokMotionPath.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes =
    R"(<scene><node name="a"/><node name="b"/><node name="c"/></scene>)";

constexpr std::string_view kFixed =
    "<offset rotOrd=\"yzx\">0.5 0.25 0.125</offset>\n<aim>1.0 0.0 0.0</aim>\n"
    "<up>0.0 1.0 0.0</up>\n";
constexpr std::string_view kZeros =
    "<offset rotOrd=\"xyz\">0.0 0.0 0.0</offset>\n<aim>0.0 0.0 0.0</aim>\n<up>0.0 0.0 0.0</up>\n";

std::string Join(std::initializer_list<std::string_view> parts) {
    std::string joined;
    for (std::string_view part : parts) joined += part;
    return joined;
}

constexpr std::string_view kGlobal = "<globalup>0.0 0.0 1.0</globalup>\n";
constexpr std::string_view kTranslate = "<upobject name=\"||b\" transform=\"translate\" />\n";
constexpr std::string_view kRotate = "<upobject name=\"||b\" transform=\"rotate\" />\n";
constexpr std::string_view kTargets =
    "<target name=\"||c\" weight=\"1.0\" />\n<target name=\"||b\" weight=\"0.5\" />\n";

}  // namespace

TEST(VokMotionPath, WritesWhatItReads) {
    const std::string text =
        R"(<motionPath name="m" constrain="||a" parameterisation="curve" constrainOrientation="true" curvePath="||c">)" +
        Join({"\n", kFixed, kGlobal, kRotate, kTargets, "</motionPath>"});
    EXPECT_EQ(Rewritten<VokMotionPath>(std::string(kNodes) + text), text);
}

TEST(VokMotionPath, AbsentAttributes) {
    Scene scene(R"(<motionPath name="m" constrain="" curvePath=""/>)");
    auto& path = scene.First<VokMotionPath>();
    EXPECT_FALSE(path.constrainOrientation);
    EXPECT_EQ(path.parameterisation, VokMotionPath::Parameterisation::Length);
    EXPECT_TRUE(VokMotionPath().constrainOrientation);
    const std::string head =
        R"(<motionPath name="m" constrain="" parameterisation="length" constrainOrientation="false" curvePath="">)";
    EXPECT_EQ(Write(path).substr(0, head.size()), head);
    EXPECT_FALSE(path.IsA(VokAimConstraint::TypeId()));
    EXPECT_TRUE(path.IsA(VokConstraint::TypeId()));
}

TEST(VokMotionPath, AnUnknownParameterisationFailsWhenWritten) {
    Scene scene(R"(<motionPath name="m" constrain="" parameterisation="foo" curvePath="">)"
                R"(</motionPath>)");
    EXPECT_EQ(scene.First<VokMotionPath>().parameterisation,
              VokMotionPath::Parameterisation::Unknown);
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokMotionPath>()); }),
              (Failure{"Internal error - please report as a bug", "|m"}));
}

TEST(VokMotionPath, WithoutACurveItFailsWhenWritten) {
    Scene scene(R"(<motionPath name="m" constrain="" parameterisation="curve"/>)");
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokMotionPath>()); }),
              (Failure{"No curve specified for motion path.", "|m"}));
}

TEST(VokMotionPath, RefusesAsAnAimConstraintDoes) {
    EXPECT_EQ(LoadFailure(R"(<motionPath name="m" constrain=""><offset rotOrd="q"/></motionPath>)"),
              (Failure{"Unknown rotation order \"q\".", "|m"}));
}
