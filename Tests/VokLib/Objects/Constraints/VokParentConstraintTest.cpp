#include <VokLib/Objects/Constraints/VokParentConstraint.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes = R"(<scene><node name="a"/><node name="b"/></scene>)";

std::string Element(std::string_view content) {
    return "<parentConstraint name=\"k\" constrain=\"||a\">\n" + std::string(content) +
           "</parentConstraint>";
}

constexpr std::string_view kOutOfRange = "Out of range access of parent constraint target offsets.";

}  // namespace

TEST(VokParentConstraint, WritesWhatItReads) {
    const std::string text = Element(R"(<offset>
<translation>1.0 2.0 3.0</translation>
<rotEul rotOrd="zyx">4.0 5.0 6.0</rotEul>
</offset>
<offset>
<translation>0.0 0.0 0.0</translation>
<rotEul rotOrd="xyz">0.0 0.0 0.0</rotEul>
</offset>
<target name="||b" weight="1.0" />
<target name="||a" weight="0.5" />
)");
    EXPECT_EQ(Rewritten<VokParentConstraint>(std::string(kNodes) + text), text);
}

TEST(VokParentConstraint, WithoutTargetsItWritesItsAttributesOnly) {
    EXPECT_EQ(Rewritten<VokParentConstraint>(std::string(kNodes) + Element("<offset/>")),
              Element(""));
}

TEST(VokParentConstraint, ATargetWithoutOffsetLoadsAndFailsWhenWritten) {
    Scene scene(std::string(kNodes) + Element(R"(<target name="||b" weight="1"/>)"));
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokParentConstraint>()); }),
              (Failure{std::string(kOutOfRange), "|k"}));
}

TEST(VokParentConstraint, BuiltInMemoryTheOffsetsFollowTheTargets) {
    Library library;
    VokParentConstraint constraint;
    constraint.AddTarget();
    constraint.AddTarget();
    ASSERT_EQ(constraint.GetTargetOffsetCount(), 2u);
    EXPECT_EQ(constraint.GetTargetOffset(1).translation, VokVector3{});
    EXPECT_EQ(constraint.GetTargetOffset(1).rotation, EulerRotation{});
    constraint.GetTargetOffset(1).translation = {1, 2, 3};
    constraint.RemoveTarget(0);
    ASSERT_EQ(constraint.GetTargetOffsetCount(), 1u);
    EXPECT_EQ(constraint.GetTargetOffset(0).translation, (VokVector3{1, 2, 3}));
    constraint.SetTargetCount(4);
    EXPECT_EQ(constraint.GetTargetOffsetCount(), 4u);
    EXPECT_EQ(constraint.GetTargetOffset(3).translation, VokVector3{});
    constraint.SetTargetCount(1);
    EXPECT_EQ(constraint.GetTargetOffsetCount(), 1u);
}

TEST(VokParentConstraint, ReadFromADocumentTheOffsetsStayAsTheyWere) {
    Scene scene(std::string(kNodes) +
                Element(R"(<target name="||b"/><offset/><target name="||a"/><offset/><offset/>)"));
    auto& constraint = scene.First<VokParentConstraint>();
    EXPECT_EQ(constraint.GetTargetOffsetCount(), 3u);
    constraint.AddTarget();
    constraint.AddTarget();
    EXPECT_EQ(constraint.GetTargetOffsetCount(), 3u);
    constraint.RemoveTarget(0);
    EXPECT_EQ(constraint.GetTargetOffsetCount(), 3u);
    constraint.SetTargetCount(0);
    EXPECT_EQ(constraint.GetTargetOffsetCount(), 3u);
}

TEST(VokParentConstraint, APartFillsTheLastOffset) {
    Scene scene(std::string(kNodes) + Element(R"(
        <offset><rotEul rotOrd="yxz">1 2 3</rotEul><translation>4 5 6</translation></offset>
        <offset><translation>7 8 9</translation></offset>)"));
    const auto& constraint = scene.First<VokParentConstraint>();
    EXPECT_EQ(constraint.GetTargetOffset(0).rotation, (EulerRotation{1, 2, 3, RotationOrder::yxz}));
    EXPECT_EQ(constraint.GetTargetOffset(0).translation, (VokVector3{4, 5, 6}));
    EXPECT_EQ(constraint.GetTargetOffset(1).translation, (VokVector3{7, 8, 9}));
    EXPECT_EQ(FailureOf([&] { constraint.GetTargetOffset(2); }),
              (Failure{std::string(kOutOfRange), "|k"}));
}

TEST(VokParentConstraint, AnUnknownOrderIsRefused) {
    EXPECT_EQ(LoadFailure(Element(R"(<offset><rotEul rotOrd="q"/></offset>)")),
              (Failure{"Unknown rotation order \"q\".", "|k"}));
}

TEST(VokParentConstraint, PartsBelongInsideAnOffset) {
    EXPECT_EQ(LoadFailure(Element("<translation>1 2 3</translation>")),
              (Failure{"Unknown tag \"translation\"", "|k"}));
}
