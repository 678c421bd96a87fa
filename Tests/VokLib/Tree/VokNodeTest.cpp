#include <VokLib/Base/VokMath.h>
#include <VokLib/Tree/VokNode.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

std::string InScene(std::string_view element) {
    return "<scene>" + std::string(element) + "</scene>";
}

}  // namespace

TEST(VokNode, WritesWhatItReads) {
    const std::string text = R"(<node name="n" parentEffect="noInherit">
<translate>1.0 2.0 3.0</translate>
<rotEul rotOrd="zyx">0.5 0.25 0.125</rotEul>
<rotAxisEul rotOrd="yzx">1.0 0.0 -1.0</rotAxisEul>
<scale>1.0 2.0 1.0</scale>
<shear>0.0 0.0 4.0</shear>
<scalePivot>1.0 0.0 0.0</scalePivot>
<scalePivotTranslation>0.0 1.0 0.0</scalePivotTranslation>
<rotatePivot>0.0 0.0 1.0</rotatePivot>
<rotatePivotTranslation>2.0 0.0 0.0</rotatePivotTranslation>
</node>)";
    EXPECT_EQ(Rewritten<VokNode>(InScene(text)), text);
}

TEST(VokNode, DefaultsWriteNoChildElement) {
    EXPECT_EQ(Rewritten<VokNode>(InScene(R"(<node name="n" parentEffect="normal"/>)")),
              "<node name=\"n\">\n</node>");
    EXPECT_EQ(Rewritten<VokNode>(InScene(R"(<node name="n">
                <translate>0 0 0</translate><rotEul>0 0 0</rotEul><scale>1 1 1</scale>
                <shear>0 0 0</shear><rotatePivot>-0 0 0</rotatePivot></node>)")),
              "<node name=\"n\">\n</node>");
}

TEST(VokNode, ZerosOfEitherSignAreLeftOut) {
    EXPECT_EQ(Rewritten<VokNode>(InScene("<node name=\"n\"><translate>0.0 -0.0 0.0</translate>"
                                         "<rotEul rotOrd=\"xyz\">-0.0 0.0 0.0</rotEul></node>")),
              "<node name=\"n\">\n</node>");
}

TEST(VokNode, ReadsItsFields) {
    Scene scene(InScene(R"(<node name="n" parentEffect="scaleCompensate">
        <shear>1 2 3</shear><translate>4 5 6</translate><rotEul rotOrd="xzy">7 8 9</rotEul></node>)"));
    const auto& node = scene.First<VokNode>();
    EXPECT_EQ(node.GetName(), "n");
    EXPECT_EQ(node.parentEffect, ParentEffect::ScaleCompensate);
    EXPECT_EQ(node.shear, (VokVector3{1, 2, 3}));
    EXPECT_EQ(node.translate, (VokVector4{4, 5, 6, 6}));
    EXPECT_EQ(node.rotation, (EulerRotation{7, 8, 9, RotationOrder::xzy}));
    EXPECT_EQ(node.rotationAxis, EulerRotation{});
    EXPECT_EQ(node.scale, (VokVector3{1, 1, 1}));
    EXPECT_EQ(node.scalePivot, VokVector4{});
}

TEST(VokNode, TheOrderAloneCausesTheRotationButNotTheAxis) {
    EXPECT_EQ(Rewritten<VokNode>(InScene(R"(<node name="n"><rotEul rotOrd="zyx">0 0 0</rotEul>
                <rotAxisEul rotOrd="zyx">0 0 0</rotAxisEul></node>)")),
              "<node name=\"n\">\n<rotEul rotOrd=\"zyx\">0.0 0.0 0.0</rotEul>\n</node>");
}

TEST(VokNode, TheOrderIsWrittenWithTheAngles) {
    EXPECT_EQ(Rewritten<VokNode>(InScene(R"(<node name="n"><rotEul>0 1 0</rotEul></node>)")),
              "<node name=\"n\">\n<rotEul rotOrd=\"xyz\">0.0 1.0 0.0</rotEul>\n</node>");
}

TEST(VokNode, AnUnknownOrderLeavesTheOrderAndAnAbsentOneResetsIt) {
    Scene scene(InScene(R"(<node name="a"><rotEul rotOrd="zyx">1 2 3</rotEul>
                <rotEul rotOrd="bogus">4 5 6</rotEul></node>
                <node name="b"><rotEul rotOrd="zyx">1 2 3</rotEul><rotEul>4 5 6</rotEul></node>)"));
    EXPECT_EQ(scene.At<VokNode>("||a").rotation, (EulerRotation{4, 5, 6, RotationOrder::zyx}));
    EXPECT_EQ(scene.At<VokNode>("||b").rotation, (EulerRotation{4, 5, 6, RotationOrder::xyz}));
}

TEST(VokNode, AnUnknownParentEffectIsRefused) {
    EXPECT_EQ(LoadFailure(InScene(R"(<node name="n" parentEffect="none"/>)")),
              (Failure{"Invalid parent effect string.", "||n"}));
}

TEST(VokNode, AnUnknownElementIsRefused) {
    EXPECT_EQ(LoadFailure(InScene(R"(<node name="n"><freedoms channels="X"/></node>)")),
              (Failure{"Unknown tag \"freedoms\"", "||n"}));
}

TEST(VokNode, NamesOfItsElementsMeanNothingInsideCustomData) {
    const std::string body = R"(<node name="n"><customData>
        <attribute name="a" type="enum" default="0" value="1"><field name="translate" index="1"/></attribute>
        </customData><translate>1 2 3</translate></node>)";
    {
        Scene scene(InScene(body));
        EXPECT_EQ(scene.First<VokNode>().translate.x, 1);
        EXPECT_EQ(scene.First<VokNode>().GetCustomData().GetCount(), 1u);
    }
    EXPECT_EQ(
        LoadFailure(InScene(
            R"(<node name="n"><customData><translate>1 2 3</translate></customData></node>)")),
        (Failure{"Unknown tag \"translate\"", "||n"}));
}

TEST(VokNode, ChildrenStandBehindItsOwnElements) {
    EXPECT_EQ(Rewritten<VokNode>(
                  InScene(R"(<node name="a"><node name="b"/><translate>1 0 0</translate></node>)")),
              "<node name=\"a\">\n<translate>1.0 0.0 0.0</translate>\n<node "
              "name=\"b\">\n</node>\n</node>");
}

TEST(VokNode, MissingNumbersAreZero) {
    Scene scene(InScene(R"(<node name="n"><translate>1</translate><scale/></node>)"));
    EXPECT_EQ(scene.First<VokNode>().translate, (VokVector4{1, 0, 0, 0}));
    EXPECT_EQ(scene.First<VokNode>().scale, VokVector3{});
}

TEST(VokNodeMatrix, PivotsMoveTheOriginOfScaleAndRotation) {
    Library library;
    VokNode node;
    node.translate = {1, 2, 3, 0};
    node.rotatePivot = {10, 0, 0, 0};
    node.rotatePivotTranslation = {0, 100, 0, 0};
    node.scalePivot = {0, 0, 5, 0};
    node.scalePivotTranslation = {0, 0, 7, 0};
    node.scale = {2, 3, 4};
    const VokMatrix wanted{{{{2, 0, 0, 0}, {0, 3, 0, 0}, {0, 0, 4, 0}, {1, 102, -5, 1}}}};
    EXPECT_EQ(node.GetLocalMatrix(), wanted);
}

TEST(VokNodeMatrix, ShearActsBeforeScale) {
    Library library;
    VokNode node;
    node.shear = {2, 3, 4};
    node.scale = {10, 100, 1000};
    const VokMatrix wanted{{{{10, 0, 0, 0}, {20, 100, 0, 0}, {30, 400, 1000, 0}, {0, 0, 0, 1}}}};
    EXPECT_EQ(node.GetLocalMatrix(), wanted);
}

TEST(VokNodeMatrix, TheAxisTurnsBeforeTheRotation) {
    Library library;
    VokNode node;
    node.rotation = {0.5f, 0, 0};
    node.rotationAxis = {0, 0.25f, 0};
    node.translate = {1, 2, 3, 0};
    using namespace VokMath;
    const VokMatrix turned =
        MultiplyAffine(FromQuaternion(EulerToQuaternion(node.rotation)), Translation(1, 2, 3));
    EXPECT_EQ(node.GetLocalMatrix(),
              MultiplyAffine(FromQuaternion(EulerToQuaternion(node.rotationAxis)), turned));
}
