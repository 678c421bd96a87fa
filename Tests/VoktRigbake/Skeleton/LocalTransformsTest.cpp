#include "VoktRigbake/RigbakeTestTools.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

std::string Element(std::string_view target, std::string_view transform) {
    return "<element target=\"" + std::string(target) + "\">" + std::string(transform) +
           "</element>";
}

std::string Pose(std::string_view bindPose, std::string_view elements) {
    return "<pose name=\"pose\" bindPose=\"" + std::string(bindPose) + "\">" +
           std::string(elements) + "</pose>";
}

constexpr const char* kMoved =
    R"(<translate>10 20 30</translate><rotEul rotOrd="xyz">0 0 0</rotEul><scale>4 5 6</scale>)";
constexpr const char* kMovedElsewhere =
    R"(<translate>7 7 7</translate><rotEul rotOrd="xyz">0 0 0</rotEul><scale>8 8 8</scale>)";

const std::string kJoints = R"(<scene><joint name="root"><translate>1 2 3</translate>
    <scale>2 2 2</scale><joint name="child"><translate>0 1 0</translate></joint></joint></scene>)";

const VokVector4 kOwnTranslation{1, 2, 3, 0};
const VokVector4 kPoseTranslation{10, 20, 30, 0};

}  // namespace

TEST(BindPose, WithoutAPoseJointsKeepTheirOwnTransforms) {
    TestScene scene(kJoints);
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(skeleton->joints[0]->translation, kOwnTranslation);
    EXPECT_EQ(skeleton->joints[0]->scale, (VokVector4{2, 2, 2, 0}));
    EXPECT_EQ(skeleton->joints[0]->rotation, (VokQuaternion{0, 0, 0, 1}));
}

TEST(BindPose, PoseValuesTakeThePlaceOfTheJointsOwn) {
    TestScene scene(kJoints + Pose("1", Element("||root", kMoved)));
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(skeleton->joints[0]->translation, kPoseTranslation);
    EXPECT_EQ(skeleton->joints[0]->scale, (VokVector4{4, 5, 6, 0}));
    EXPECT_EQ(skeleton->joints[1]->translation, (VokVector4{0, 1, 0, 0}))
        << "a joint without an element keeps its own";
}

TEST(BindPose, PoseThatIsNoBindPoseIsPassedOver) {
    TestScene scene(kJoints + Pose("0", Element("||root", kMoved)) +
                    Pose("x", Element("||root", kMoved)));
    EXPECT_EQ(scene.Build({"root"})->joints[0]->translation, kOwnTranslation);
}

TEST(BindPose, PoseOfSomethingElseIsPassedOverForTheNext) {
    TestScene scene("<scene><node name=\"n\"/><joint name=\"other\"/>" + kJoints.substr(7) +
                    Pose("1", Element("||n", kMovedElsewhere)) +
                    Pose("1", Element("||other", kMovedElsewhere)) + Pose("1", "") +
                    Pose("1", Element("||root", kMoved)));
    EXPECT_EQ(scene.Build({"root"})->joints[0]->translation, kPoseTranslation);
}

TEST(BindPose, FirstPoseThatTouchesTheSkeletonIsTheOnlyOne) {
    TestScene scene(kJoints + Pose("1", Element("||root|child", kMovedElsewhere)) +
                    Pose("1", Element("||root", kMoved)));
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(skeleton->joints[0]->translation, kOwnTranslation);
    EXPECT_EQ(skeleton->joints[1]->translation, (VokVector4{7, 7, 7, 0}));
}

TEST(BindPose, OfTwoElementsForOneJointTheFirstStands) {
    TestScene scene(kJoints +
                    Pose("1", Element("||root", kMoved) + Element("||root", kMovedElsewhere)));
    EXPECT_EQ(scene.Build({"root"})->joints[0]->translation, kPoseTranslation);
}

TEST(BindPose, PoseInsideTheHierarchyIsNotLookedAt) {
    TestScene scene("<scene>" + Pose("1", Element("||root", kMoved)) + kJoints.substr(7));
    EXPECT_EQ(scene.Build({"root"})->joints[0]->translation, kOwnTranslation);
}

TEST(BindPose, ElementWithoutATargetIsPassedOver) {
    TestScene scene(kJoints + "<reference name=\"r\" uri=\"/o.qeli\" namespace=\"o\"/>" +
                    Pose("1", Element("|o:joint", kMovedElsewhere) + Element("||root", kMoved)));
    EXPECT_EQ(scene.Build({"root"})->joints[0]->translation, kPoseTranslation);
}

TEST(BindPose, RotationIsComposedWithJointOrientAndRotationAxis) {
    TestScene scene(R"(<scene><joint name="root">
        <jointOrientEul rotOrd="xyz">0.5 0 0</jointOrientEul>
        <rotEul rotOrd="zyx">0.1 0.2 0.3</rotEul>
        <rotAxisEul rotOrd="xyz">0.25 0 0</rotAxisEul></joint></scene>)");
    const auto skeleton = scene.Build({"root"});
    const VokJoint& joint = *scene.Joint("root");
    EXPECT_EQ(skeleton->joints[0]->rotation, joint.GetLocalRotation());
    EXPECT_NE(skeleton->joints[0]->rotation, joint.ComposeRotation({}));
}

TEST(BindPose, PoseRotationTakesThePlaceOfTheJointsRotationAlone) {
    TestScene scene(std::string(R"(<scene><joint name="root">
        <jointOrientEul rotOrd="xyz">0.5 0 0</jointOrientEul>
        <rotEul rotOrd="xyz">0 0 1</rotEul>
        <rotAxisEul rotOrd="xyz">0.25 0 0</rotAxisEul></joint></scene>)") +
                    Pose("1", Element("||root", R"(<translate>0 0 0</translate>
                         <rotEul rotOrd="xyz">1 0 0</rotEul><scale>1 1 1</scale>)")));
    const VokQuaternion rotation = scene.Build({"root"})->joints[0]->rotation;
    const float halfAngle = (0.5f + 1.0f + 0.25f) / 2;  // all three turn about x
    EXPECT_NEAR(rotation.x, std::sin(halfAngle), 1e-6);
    EXPECT_NEAR(rotation.w, std::cos(halfAngle), 1e-6);
    EXPECT_EQ(rotation.y, 0);
    EXPECT_EQ(rotation.z, 0);
}

TEST(BindPose, FourthComponentsAreZeroWhateverTheSceneHolds) {
    TestScene scene(kJoints + Pose("1", Element("||root|child", kMoved)));
    scene.Joint("root")->translate.w = 9;
    const auto skeleton = scene.Build({"root"});
    for (const auto& joint : skeleton->joints) {
        EXPECT_EQ(joint->translation.w, 0);
        EXPECT_EQ(joint->scale.w, 0);
    }
}
