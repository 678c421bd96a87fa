#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Nodes/VokJoint.h>

#include <gtest/gtest.h>

#include <cmath>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

std::string InScene(std::string_view element) {
    return "<scene>" + std::string(element) + "</scene>";
}

constexpr std::string_view kDefaults =
    "<freedoms channels=\"XYZ\" />\n<jointOrientEul rotOrd=\"xyz\">0.0 0.0 0.0</jointOrientEul>\n";

}  // namespace

TEST(VokJoint, WritesWhatItReads) {
    const std::string text = R"(<joint name="j">
<freedoms channels="XZ" />
<minrotation channels="Y">-1.0</minrotation>
<maxrotation channels="XYZ">1.0 2.0 3.0</maxrotation>
<jointOrientEul rotOrd="zxy">0.5 0.0 0.0</jointOrientEul>
<scaleCompensate>0</scaleCompensate>
<translate>1.0 2.0 3.0</translate>
<rotEul rotOrd="xyz">0.5 0.25 0.125</rotEul>
</joint>)";
    EXPECT_EQ(Rewritten<VokJoint>(InScene(text)), text);
}

TEST(VokJoint, FreedomsAndOrientationAreAlwaysWritten) {
    EXPECT_EQ(Rewritten<VokJoint>(InScene(R"(<joint name="j"/>)")),
              "<joint name=\"j\">\n" + std::string(kDefaults) + "</joint>");
}

TEST(VokJoint, NoFreeAxisGivesEmptyChannels) {
    EXPECT_EQ(
        Rewritten<VokJoint>(InScene(R"(<joint name="j"><freedoms channels="none"/></joint>)")),
        "<joint name=\"j\">\n<freedoms channels=\"\" />\n"
        "<jointOrientEul rotOrd=\"xyz\">0.0 0.0 0.0</jointOrientEul>\n</joint>");
}

TEST(VokJoint, LimitsAreInAxisOrderWhateverTheLetterOrder) {
    Scene scene(InScene(R"(<joint name="j"><minrotation channels="ZX">1 2</minrotation>
                           <maxrotation channels="a Y;">3</maxrotation></joint>)"));
    const auto& joint = scene.First<VokJoint>();
    EXPECT_EQ(joint.hasMinimum, (std::array{true, false, true}));
    EXPECT_EQ(joint.minimumRotation, (VokVector3{1, 0, 2}));
    EXPECT_EQ(joint.hasMaximum, (std::array{false, true, false}));
    EXPECT_EQ(joint.maximumRotation, (VokVector3{0, 3, 0}));
    EXPECT_EQ(joint.freedoms, (std::array{true, true, true}));
}

TEST(VokJoint, ChannelsAreRequired) {
    for (const char* element : {"freedoms", "minrotation", "maxrotation"})
        EXPECT_EQ(LoadFailure(InScene("<joint name=\"j\"><" + std::string(element) + "/></joint>")),
                  (Failure{"Missing attribute in parse", "||j"}))
            << element;
}

TEST(VokJoint, OrientationWithoutOrderIsXyzAndAnUnknownOrderIsIgnored) {
    Scene scene(InScene(R"(
        <joint name="a"><jointOrientEul rotOrd="yxz">1 2 3</jointOrientEul>
            <jointOrientEul>4 5 6</jointOrientEul></joint>
        <joint name="b"><jointOrientEul rotOrd="yxz">1 2 3</jointOrientEul>
            <jointOrientEul rotOrd="?">4 5 6</jointOrientEul></joint>)"));
    EXPECT_EQ(scene.At<VokJoint>("||a").jointOrient, (EulerRotation{4, 5, 6, RotationOrder::xyz}));
    EXPECT_EQ(scene.At<VokJoint>("||b").jointOrient, (EulerRotation{4, 5, 6, RotationOrder::yxz}));
}

TEST(VokJoint, ScaleCompensateTellsTheParentEffect) {
    Scene scene(InScene(R"(<joint name="a"/>
        <joint name="b"><scaleCompensate>false</scaleCompensate></joint>
        <joint name="c" parentEffect="normal"><scaleCompensate>true</scaleCompensate></joint>
        <joint name="d" parentEffect="noInherit"/>)"));
    EXPECT_EQ(scene.At<VokJoint>("||a").parentEffect, ParentEffect::ScaleCompensate);
    EXPECT_EQ(scene.At<VokJoint>("||b").parentEffect, ParentEffect::Normal);
    EXPECT_EQ(scene.At<VokJoint>("||c").parentEffect, ParentEffect::ScaleCompensate);
    EXPECT_EQ(scene.At<VokJoint>("||d").parentEffect, ParentEffect::NoInherit);
}

TEST(VokJoint, NoInheritIsWrittenAsAnElementThatReadsBackAsNormal) {
    EXPECT_EQ(Rewritten<VokJoint>(InScene(R"(<joint name="j" parentEffect="noInherit"/>)")),
              "<joint name=\"j\">\n" + std::string(kDefaults) +
                  "<scaleCompensate>0</scaleCompensate>\n</joint>");
}

TEST(VokJoint, IsANodeOfItsOwnExactType) {
    Library library;
    VokJoint joint;
    EXPECT_TRUE(joint.IsA(VokNode::TypeId()));
    EXPECT_TRUE(joint.IsExactly(VokJoint::TypeId()));
    EXPECT_FALSE(joint.IsExactly(VokNode::TypeId()));
    EXPECT_EQ(joint.GetElementName(), "joint");
}

TEST(VokJointMatrix, AJointParentsScaleIsTakenBackUnderScaleCompensation) {
    Scene scene(InScene(R"(<joint name="a"><scale>2 4 8</scale>
        <joint name="on"><translate>1 2 3</translate></joint>
        <joint name="off" parentEffect="normal"/><joint name="none" parentEffect="noInherit"/>
        </joint><node name="n"><scale>2 4 8</scale><joint name="j"/></node>)"));
    const VokMatrix compensated{
        {{{0.5f, 0, 0, 0}, {0, 0.25f, 0, 0}, {0, 0, 0.125f, 0}, {1, 2, 3, 1}}}};
    EXPECT_EQ(scene.At<VokJoint>("||a|on").GetLocalMatrix(), compensated);
    EXPECT_EQ(scene.At<VokJoint>("||a|off").GetLocalMatrix(), VokMath::Identity());
    EXPECT_EQ(scene.At<VokJoint>("||a|none").GetLocalMatrix(), VokMath::Identity());
    // A plain node above is not compensated.
    EXPECT_EQ(scene.At<VokJoint>("||n|j").GetLocalMatrix(), VokMath::Identity());
}

TEST(VokJointMatrix, AScaleOfZeroAboveGivesNoFailure) {
    Scene scene(R"(<joint name="a"><scale>0 1 1</scale><joint name="b"/></joint>)");
    const VokMatrix m = scene.At<VokJoint>("|a|b").GetLocalMatrix();
    EXPECT_FALSE(std::isfinite(m[0][0]));
}

TEST(VokJointMatrix, ScaleThenRotationThenInverseParentScaleThenTranslation) {
    Scene scene(InScene(R"(<joint name="a"><scale>2 2 4</scale><joint name="b">
        <scale>3 5 7</scale><rotEul>0.5 0 0</rotEul><translate>1 2 3</translate></joint></joint>)"));
    using namespace VokMath;
    VokMatrix m = MultiplyAffine(Scale(0.5f, 0.5f, 0.25f), Translation(1, 2, 3));
    m = MultiplyAffine(FromQuaternion(scene.At<VokJoint>("||a|b").GetLocalRotation()), m);
    m = MultiplyAffine(Scale(3, 5, 7), m);
    EXPECT_EQ(scene.At<VokJoint>("||a|b").GetLocalMatrix(), m);
}

TEST(VokJointMatrix, ShearAndPivotsTakeNoPart) {
    Library library;
    VokJoint joint;
    joint.shear = {1, 2, 3};
    joint.rotatePivot = joint.scalePivot = joint.rotatePivotTranslation =
        joint.scalePivotTranslation = {1, 2, 3, 4};
    EXPECT_EQ(joint.GetLocalMatrix(), VokMath::Identity());
}

TEST(VokJointMatrix, TheOrientationIsTheOutermostRotationAndTheAxisTheInnermost) {
    Library library;
    VokJoint joint;
    joint.jointOrient = {0.5f, 0, 0, RotationOrder::zyx};
    joint.rotation = {0, 0.25f, 0.5f, RotationOrder::yzx};
    joint.rotationAxis = {0, 0, 0.125f};
    using namespace VokMath;
    EXPECT_EQ(joint.GetLocalRotation(), Multiply(EulerToQuaternion(joint.jointOrient),
                                                 Multiply(EulerToQuaternion(joint.rotation),
                                                          EulerToQuaternion(joint.rotationAxis))));
    EXPECT_EQ(joint.ComposeRotation({}),
              Multiply(EulerToQuaternion(joint.jointOrient),
                       Multiply(EulerToQuaternion({}), EulerToQuaternion(joint.rotationAxis))));
}
