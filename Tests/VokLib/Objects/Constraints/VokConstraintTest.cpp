#include <VokLib/Objects/Constraints/VokConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes = R"(<scene><node name="a"/><node name="b"/></scene>)";
constexpr std::string_view kTarget = "<target name=\"||b\" weight=\"0.5\" />\n";

std::string Element(const std::string& type, const std::string& content) {
    return "<" + type + " name=\"k\" constrain=\"||a\">\n" + content + "</" + type + ">";
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
