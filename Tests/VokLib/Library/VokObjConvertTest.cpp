#include "VokLib/SceneTestTools.h"

#include <VokLib/CustomData/VokCustomAttributeString.h>
#include <VokLib/Library/VokObjConvert.h>
#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Nodes/VokLodGroup.h>
#include <VokLib/Tree/VokCast.h>

using namespace SceneTest;

namespace {

class TwiceTheSame : public VokObjConvert {
  public:
    TwiceTheSame() {
        RegisterDataCopier(1, 2, nullptr);
        RegisterDataCopier(2, 1, nullptr);
        RegisterDataCopier(1, 2, nullptr);
    }
};

}  // namespace

class ObjConvert : public SceneTest::Test {
  protected:
    VokJoint* ToJoint() {
        VokObj* converted = VokObjConvert::Get().Convert(node, "joint");
        node = nullptr;
        return vok_cast<VokJoint>(converted);
    }

    Failure Refusal() {
        return FailureOf([&] { VokObjConvert::Get().Convert(node, "joint"); });
    }

    void Animate(VokObj* object, const char* channel) {
        VokAnim* anim = Add<VokAnim>(&world, "anim");
        anim->target.SetTarget(object);
        Add<VokAnimChannel>(anim, "channel")->attributes.Set("channel", channel);
    }

    VokWorld world;
    VokNode* elder = Add<VokNode>(world.GetHierarchy(), "elder");
    VokNode* node = Add<VokNode>(world.GetHierarchy(), "node");
    VokNode* younger = Add<VokNode>(world.GetHierarchy(), "younger");
};

TEST_F(ObjConvert, NewObjectTakesNamePlaceChildrenCustomDataAndLinks) {
    VokNode* a = Add<VokNode>(node, "a");
    VokNode* b = Add<VokNode>(node, "b");
    auto text = std::make_unique<VokCustomAttributeString>("t", "string", false);
    text->SetValue("x");
    node->GetCustomData().AddAttribute(std::move(text));
    VokObjLinkHandle handle(a);
    handle.SetTarget(node);

    VokJoint* joint = ToJoint();
    ASSERT_EQ(world.GetHierarchy()->GetChildCount(), 3u);
    EXPECT_EQ(world.GetHierarchy()->GetChild(1), joint);
    EXPECT_EQ(joint->GetName(), "node");
    ASSERT_EQ(joint->GetChildCount(), 2u);
    EXPECT_EQ(joint->GetChild(0), a);
    EXPECT_EQ(joint->GetChild(1), b);
    EXPECT_EQ(a->GetParent(), joint);
    ASSERT_EQ(joint->GetCustomData().GetCount(), 1u);
    EXPECT_EQ(handle.GetTarget(), joint);
    joint->GetParent()->DeleteChild(joint);
    EXPECT_FALSE(handle.IsValid());
}

TEST_F(ObjConvert, JointTakesTheTransformAndNoParentEffect) {
    node->translate = {1, 2, 3, 0};
    node->rotation = {0.5f, 0, 0, RotationOrder::zyx};
    node->rotationAxis = {0, 0.25f, 0, RotationOrder::yzx};
    node->scale = {2, 3, 4};
    node->parentEffect = ParentEffect::NoInherit;
    const VokJoint* joint = ToJoint();
    EXPECT_EQ(joint->translate.x, 1);
    EXPECT_EQ(joint->translate.y, 2);
    EXPECT_EQ(joint->translate.z, 3);
    EXPECT_EQ(joint->rotation, (EulerRotation{0.5f, 0, 0, RotationOrder::zyx}));
    EXPECT_EQ(joint->rotationAxis, (EulerRotation{0, 0.25f, 0, RotationOrder::yzx}));
    EXPECT_EQ(joint->scale, (VokVector3{2, 3, 4}));
    EXPECT_EQ(joint->parentEffect, ParentEffect::Normal);
    EXPECT_EQ(joint->jointOrient, EulerRotation());
}

TEST_F(ObjConvert, PivotsWithoutAnimationGoIntoTheTranslation) {
    node->translate = {1, 0, 0, 0};
    node->rotatePivot = {0, 5, 0, 0};
    node->scalePivot = {0, 0, 2, 0};
    node->scale = {1, 1, 3};
    const VokMatrix local = node->GetLocalMatrix();
    const VokJoint* joint = ToJoint();
    EXPECT_EQ(joint->translate.x, local[3][0]);
    EXPECT_EQ(joint->translate.y, local[3][1]);
    EXPECT_EQ(joint->translate.z, local[3][2]);
    EXPECT_EQ(joint->translate.z, -4);
}

TEST_F(ObjConvert, AnimatedScaleAboutAPivotIsRefused) {
    const Failure refusal =
        OfObject("Failed to convert node to joint. Scale-pivot is not zero and scale is animated.",
                 "||node");
    node->scalePivot = {0, 1, 0, 0};
    for (const char* channel : {"scale", "scaleX", "scaleY", "scaleZ"}) {
        Animate(node, channel);
        EXPECT_EQ(Refusal(), refusal) << channel;
        world.DeleteChild(world.FindChild("anim"));
    }
    Animate(node, "scaleXY");
    Animate(node, "Scale");
    Animate(elder, "scale");
    EXPECT_EQ(ToJoint()->GetName(), "node");
}

TEST_F(ObjConvert, AnimatedRotationAboutAPivotIsRefused) {
    const Failure refusal = OfObject(
        "Failed to convert node to joint. Rotate-pivot is not zero and rotation is animated.",
        "||node");
    node->rotatePivot = {0, 0, 2e-6f, 0};
    for (const char* channel : {"rotate", "rotateX", "rotateY", "rotateZ"}) {
        Animate(node, channel);
        EXPECT_EQ(Refusal(), refusal) << channel;
        world.DeleteChild(world.FindChild("anim"));
    }
    Animate(node, "rotateX");
    node->rotatePivot = {0, 0, 5e-7f, 7};
    EXPECT_EQ(ToJoint()->GetName(), "node");
}

TEST_F(ObjConvert, ShearIsRefusedAboveTheLimit) {
    node->shear = {0, 2e-6f, 0};
    EXPECT_EQ(Refusal(), OfObject("Failed to convert node to joint. Shear is non-zero.", "||node"));
    node->shear = {0, 5e-7f, 0};
    EXPECT_EQ(ToJoint()->GetName(), "node");
}

TEST_F(ObjConvert, RefusedConversionLeavesTheTreeAsItWas) {
    VokNode* child = Add<VokNode>(node, "child");
    VokObjLinkHandle handle(child);
    handle.SetTarget(node);
    node->shear = {1, 0, 0};
    Refusal();
    ASSERT_EQ(world.GetHierarchy()->GetChildCount(), 3u);
    EXPECT_EQ(world.GetHierarchy()->GetChild(1), node);
    EXPECT_EQ(child->GetParent(), node);
    EXPECT_EQ(node->GetChildCount(), 1u);
    EXPECT_EQ(handle.GetTarget(), node);
}

TEST_F(ObjConvert, PairWithoutACopierKeepsTheDefaults) {
    node->scale = {2, 2, 2};
    VokObj* group = VokObjConvert::Get().Convert(node, "lodgroup");
    EXPECT_EQ(vok_cast<VokLodGroup>(group)->scale, (VokVector3{1, 1, 1}));
    EXPECT_EQ(group->GetName(), "node");
}

TEST_F(ObjConvert, UnknownTargetTypeIsRefused) {
    EXPECT_EQ(FailureOf([&] { VokObjConvert::Get().Convert(node, "mystery"); }),
              OfObject("Failed to find factory to create a new object.", "||node"));
}

TEST(ObjConvertRegistry, SecondCopierForOnePairIsRefused) {
    EXPECT_EQ(FailureOf([] { TwiceTheSame(); }), OfObject("Duplicate data copiers."));
    EXPECT_FALSE(VokObjConvert::Exists());
}
