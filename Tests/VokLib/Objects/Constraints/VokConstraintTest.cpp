#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokSpringConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes = R"(<scene><node name="a"/><node name="b"/></scene>)";
constexpr std::string_view kTarget = "<target name=\"||b\" weight=\"0.5\" />\n";

std::string Element(const std::string& type, const std::string& content) {
    return "<" + type + " name=\"k\" constrain=\"||a\">\n" + content + "</" + type + ">";
}

template <class T>
void ExpectRoundTrip(const std::string& content) {
    const std::string text = Element(std::string(T::kElementName), content + std::string(kTarget));
    EXPECT_EQ(Rewritten<T>(std::string(kNodes) + text), text);
}

template <class T>
std::string Minimal() {
    return Rewritten<T>(std::string(kNodes) + Element(std::string(T::kElementName), ""));
}

}  // namespace

TEST(VokConstraint, TheConstrainedObjectIsRequiredAndMayBeEmpty) {
    EXPECT_EQ(LoadFailure(R"(<scaleConstraint name="k"/>)"),
              (Failure{"Missing constrained attribute.", "|k"}));
    Scene scene(R"(<scaleConstraint name="k" constrain=""/>)");
    EXPECT_FALSE(scene.First<VokScaleConstraint>().constrained.IsValid());
}

TEST(VokConstraint, ATargetWithoutWeightHasWeightZero) {
    Scene scene(std::string(kNodes) +
                Element("scaleConstraint", R"(<target name="||b"/><target/>)"));
    const auto& constraint = scene.First<VokScaleConstraint>();
    ASSERT_EQ(constraint.GetTargetCount(), 2u);
    EXPECT_EQ(constraint.GetTarget(0).weight, 0);
    EXPECT_EQ(constraint.GetTarget(0).object.GetTarget()->GetName(), "b");
    EXPECT_FALSE(constraint.GetTarget(1).object.IsValid());
    EXPECT_EQ(constraint.constrained.GetTarget()->GetName(), "a");
}

TEST(VokConstraint, TargetsAreAddedCountedAndRemoved) {
    Scene scene(std::string(kNodes) + Element("scaleConstraint", R"(<target name="||a" weight="1"/>
                    <target name="||b" weight="2"/><target name="||a" weight="3"/>)"));
    auto& constraint = scene.First<VokScaleConstraint>();
    constraint.RemoveTarget(0);
    ASSERT_EQ(constraint.GetTargetCount(), 2u);
    EXPECT_EQ(constraint.GetTarget(0).weight, 2);
    EXPECT_EQ(constraint.GetTarget(0).object.GetTarget()->GetName(), "b");
    EXPECT_EQ(constraint.GetTarget(1).weight, 3);
    EXPECT_EQ(FailureOf([&] { constraint.RemoveTarget(2); }),
              (Failure{"Out of range removal of constraint target.", "|k"}));
    constraint.SetTargetCount(1);
    EXPECT_EQ(constraint.GetTargetCount(), 1u);
    constraint.SetTargetCount(3);
    EXPECT_FALSE(constraint.GetTarget(2).object.IsValid());
    constraint.AddTarget();
    EXPECT_EQ(constraint.GetTargetCount(), 4u);
    // The links of targets that moved still follow their objects.
    scene.world.GetHierarchy()->DeleteChild(scene.world.GetHierarchy()->FindChild("b"));
    EXPECT_FALSE(constraint.GetTarget(0).object.IsValid());
}

TEST(VokConstraint, APlainConstraintIsNoElement) {
    EXPECT_EQ(LoadFailure(R"(<constraint name="k" constrain=""/>)").text,
              "Unknown tag \"constraint\"");
}

TEST(VokConstraint, NothingBelongsInsideATarget) {
    EXPECT_EQ(LoadFailure(Element("scaleConstraint", "<target><x/></target>")),
              (Failure{"Unknown tag \"x\"", "|k"}));
    // An element of the derived type is not one of its target's.
    EXPECT_EQ(LoadFailure(Element("scaleConstraint", "<target><offset/></target>")),
              (Failure{"Unknown tag \"offset\"", "|k"}));
}

TEST(VokOrientationConstraint, WritesWhatItReads) {
    for (const char* method : {"noFlip", "average", "shortest", "longest", "cache"})
        ExpectRoundTrip<VokOrientationConstraint>(
            "<rotEul rotOrd=\"zxy\">1.0 2.0 3.0</rotEul>\n<orientInterpolation>" +
            std::string(method) + "</orientInterpolation>\n");
}

TEST(VokOrientationConstraint, BothElementsAreAlwaysWritten) {
    EXPECT_EQ(Minimal<VokOrientationConstraint>(),
              Element("orientationConstraint",
                      "<rotEul rotOrd=\"xyz\">0.0 0.0 0.0</rotEul>\n"
                      "<orientInterpolation>average</orientInterpolation>\n"));
}

TEST(VokOrientationConstraint, UnknownTextsAreRefused) {
    EXPECT_EQ(LoadFailure(Element("orientationConstraint",
                                  "<orientInterpolation>slerp</orientInterpolation>")),
              (Failure{"Unknown orient interpolation method \"slerp\".", "|k"}));
    EXPECT_EQ(LoadFailure(Element("orientationConstraint", R"(<rotEul rotOrd="XYZ"/>)")),
              (Failure{"Unknown rotation order \"XYZ\".", "|k"}));
    EXPECT_EQ(
        FailureOf([] { GetOrientInterpolationText(static_cast<OrientInterpolation>(5)); }).text,
        "Unknown OrientInterpolation enum value.");
}

TEST(VokScaleConstraint, WritesWhatItReads) {
    ExpectRoundTrip<VokScaleConstraint>("<offset>1.0 2.0 3.0</offset>\n");
    EXPECT_EQ(Minimal<VokScaleConstraint>(),
              Element("scaleConstraint", "<offset>0.0 0.0 0.0</offset>\n"));
}

TEST(VokTranslationConstraint, WritesWhatItReads) {
    ExpectRoundTrip<VokTranslationConstraint>("<offset>1.0 2.0 3.0</offset>\n");
    EXPECT_EQ(Minimal<VokTranslationConstraint>(),
              Element("translationConstraint", "<offset>0.0 0.0 0.0</offset>\n"));
}

TEST(VokSpringConstraint, WritesWhatItReads) {
    ExpectRoundTrip<VokSpringConstraint>(
        "<stiffness>1.0</stiffness>\n<restLength>2.0</restLength>\n<damping>3.0</damping>\n");
    EXPECT_EQ(Minimal<VokSpringConstraint>(),
              Element("springConstraint",
                      "<stiffness>0.0</stiffness>\n<restLength>0.0</restLength>\n"
                      "<damping>0.0</damping>\n"));
}
