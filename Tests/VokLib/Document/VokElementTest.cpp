#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Sets/VokPose.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

// A document may hold an object's elements in any order, with text, objects and custom data between
// and inside them; it is written in one order, each element's text being what stood behind its last
// child.

TEST(ElementOrder, AJointIsWrittenInOneOrderWhateverItWasReadFrom) {
    const std::string written = R"(<joint name="j">
<freedoms channels="YZ" />
<minrotation channels="XZ">1.0 2.0</minrotation>
<maxrotation channels="Y">3.0</maxrotation>
<jointOrientEul rotOrd="zyx">0.5 0.0 0.0</jointOrientEul>
<scaleCompensate>0</scaleCompensate>
<translate>1.0 2.0 3.0</translate>
<rotEul rotOrd="yxz">0.0 0.0 0.0</rotEul>
<rotAxisEul rotOrd="xyz">0.0 0.0 1.0</rotAxisEul>
<scale>2.0 1.0 1.0</scale>
<shear>0.0 1.0 0.0</shear>
<scalePivot>1.0 0.0 0.0</scalePivot>
<scalePivotTranslation>2.0 0.0 0.0</scalePivotTranslation>
<rotatePivot>3.0 0.0 0.0</rotatePivot>
<rotatePivotTranslation>4.0 0.0 0.0</rotatePivotTranslation>
<node name="first">
</node>
<node name="second">
<scale>9.0 9.0 9.0</scale>
</node>
<customData>
<attribute name="a" type="int" default="0" value="7">
</attribute>
</customData>
</joint>)";
    EXPECT_EQ(Rewritten<VokJoint>(R"(<joint name="j" parentEffect="noInherit">1 2 3
        <node name="first"/>9 9 9
        <rotatePivotTranslation>4 0 0</rotatePivotTranslation>
        <rotatePivot>3 0 0</rotatePivot>
        <scalePivotTranslation>2 0 0</scalePivotTranslation>
        <scalePivot>1 0 0</scalePivot>
        <shear>0 1 0</shear>
        <scale>5 5 5<node name="second"><scale>9 9 9</scale></node>2 1 1</scale>
        <customData>text<attribute name="a" type="int" value="7">8<scale>3</scale>9</attribute>
        </customData>
        <rotAxisEul rotOrd="XYZ">0 0 1</rotAxisEul>
        <rotEul rotOrd="yxz">0 0 0</rotEul>
        <translate>7 7 7<!-- joined -->7<customData/>1 2 3</translate>
        <jointOrientEul rotOrd="zyx">.5 0 0</jointOrientEul>
        <maxrotation channels="Y">3 4</maxrotation>
        <minrotation channels="ZX">1 2</minrotation>
        <freedoms channels="ZY">1</freedoms>
        </joint>)"),
              written);
    EXPECT_EQ(Rewritten<VokJoint>(written), written);
}

TEST(ElementOrder, AnElementInsideAnotherEndsBoth) {
    // One element is open at a time: the inner one takes its place, and the outer text is nobody's.
    EXPECT_EQ(Rewritten<VokNode>(R"(<node name="n"><translate>1 1 1<scale>2 2 2</scale>3 3 3
              </translate></node>)"),
              "<node name=\"n\">\n<scale>2.0 2.0 2.0</scale>\n</node>");
}

TEST(ElementOrder, AnObjectInsideAPosesElementLeavesTheElementOpen) {
    EXPECT_EQ(Rewritten<VokPose>(R"(<pose name="p"><element target=""><node name="n"/>
              <scale>2 2 2</scale><customData/><translate>1 2 3</translate></element></pose>)"),
              R"(<pose name="p">
<element target="">
<translate>1.0 2.0 3.0</translate>
<rotEul rotOrd="xyz">0.0 0.0 0.0</rotEul>
<scale>2.0 2.0 2.0</scale>
</element>
<node name="n">
</node>
</pose>)");
}
