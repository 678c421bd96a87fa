#include "Stages/TurnWorld.h"

#include <VokLib/Base/VokException.h>
#include <VokLib/Base/VokMath.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Objects/Animation/VokAnimChannel.h>
#include <VokLib/Objects/Geometry/VokSkin.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Sets/VokPose.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "VoktRigbake/RigbakeTestTools.h"

// The wanted bits were computed apart from these libraries, every operation rounded to single
// precision.

namespace {

constexpr int kYUp = 0;
constexpr int kZUp = 1;

constexpr const char* kTurnedNodeName = "__VokChangeUpAxis__magic_node";

template <class T>
T* First(VokWorld& world) {
    T* found = nullptr;
    ForEach<T>(&world, [&found](T& object) {
        if (found == nullptr) found = &object;
    });
    return found;
}

std::array<std::uint32_t, 3> BitsOf(float x, float y, float z) {
    return {std::bit_cast<std::uint32_t>(x), std::bit_cast<std::uint32_t>(y),
            std::bit_cast<std::uint32_t>(z)};
}

template <class T>
std::array<std::uint32_t, 3> BitsOf(const T& vector) {
    return BitsOf(vector.x, vector.y, vector.z);
}

std::string Animation(std::string_view target, std::string_view channel, std::string_view data) {
    return "<anim name=\"anim\" target=\"" + std::string(target) +
           "\"><animChannel name=\"c\" channel=\"" + std::string(channel) + "\">" +
           std::string(data) + "</animChannel></anim>";
}

constexpr const char* kSamples =
    R"(<animData interp="Timestep" numKeys="2" keyStride="3" duration="1"><keyValues>
       1 2 3 4 5 6</keyValues></animData>)";

const std::vector<float>& KeyValues(VokWorld& world) {
    return First<VokAnimChannel>(world)->keyValues;
}

/// What a turn to y does to the point 1 2 3, and a turn to z: the matrix has gone through a
/// quaternion and is no exact quarter turn.
constexpr std::array<std::uint32_t, 3> kPointToY{0x3F800000, 0x40400000, 0xBFFFFFFE};
constexpr std::array<std::uint32_t, 3> kPointToZ{0x3F800000, 0xC03FFFFE, 0x40000000};

}  // namespace

TEST(TurnWorld, EverythingComesUnderOneTurnedNodeInItsOrder) {
    for (const int target : {kYUp, kZUp}) {
        TestScene scene(R"(<scene><joint name="a"/><node name="b"/><joint name="c"/></scene>)",
                        target == kYUp ? R"(upaxis="z")" : R"(upaxis="y")");
        const VokJoint* a = scene.Joint("a");
        TurnWorld(scene.World(), target, false);
        const VokScene& hierarchy = *scene.World().GetHierarchy();
        ASSERT_EQ(hierarchy.GetChildCount(), 1u);
        const auto* node = ExactCast<VokNode>(hierarchy.GetChild(0));
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(node->GetName(), kTurnedNodeName);
        EXPECT_EQ(BitsOf(node->rotation),
                  (std::array<std::uint32_t, 3>{target == kYUp ? 0xBFC90FDBu : 0x3FC90FDBu, 0, 0}));
        EXPECT_EQ(node->rotation.order, RotationOrder::xyz);
        EXPECT_EQ(node->translate, VokVector4{});
        ASSERT_EQ(node->GetChildCount(), 3u);
        EXPECT_EQ(node->GetChild(0), a);
        EXPECT_EQ(node->GetChild(1)->GetName(), "b");
        EXPECT_EQ(node->GetChild(2)->GetName(), "c");
        EXPECT_EQ(scene.World().GetUpAxis(), target);
    }
}

TEST(TurnWorld, AWorldThatStandsRightIsLeftAsItIs) {
    for (const int target : {kYUp, kZUp}) {
        TestScene scene(R"(<scene><joint name="a"><translate>1 2 3</translate></joint></scene>)" +
                            Animation("||a", "translate", kSamples),
                        target == kYUp ? R"(upaxis="y")" : R"(upaxis="z")");
        TurnWorld(scene.World(), target, true);
        EXPECT_EQ(scene.World().GetHierarchy()->GetChild(0), scene.Joint("a"));
        EXPECT_EQ(scene.Joint("a")->translate, (VokVector4{1, 2, 3, 3}));
        EXPECT_EQ(KeyValues(scene.World()), (std::vector<float>{1, 2, 3, 4, 5, 6}));
    }
}

TEST(TurnWorld, TurnsOnceAndBack) {
    TestScene scene(R"(<scene><joint name="a"/></scene>)", R"(upaxis="z")");
    TurnWorld(scene.World(), kYUp, false);
    TurnWorld(scene.World(), kYUp, false);
    const VokObj* parent = scene.Joint("a")->GetParent();
    EXPECT_EQ(parent->GetParent(), scene.World().GetHierarchy());
    TurnWorld(scene.World(), kZUp, false);
    EXPECT_EQ(scene.Joint("a")->GetParent(), parent);
    EXPECT_EQ(parent->GetParent()->GetName(), kTurnedNodeName);
}

TEST(TurnWorld, WithoutAnimationEveryObjectKeepsItsValues) {
    TestScene scene(R"(<scene><joint name="a"><translate>1 2 3</translate>
        <rotEul>0.1 0.2 0.3</rotEul></joint></scene>
        <pose name="p" bindPose="1"><element target="||a"><translate>1 2 3</translate>
        </element></pose>)" +
                        Animation("||a", "translate", kSamples),
                    R"(upaxis="z")");
    TurnWorld(scene.World(), kYUp, false);
    EXPECT_EQ(scene.Joint("a")->translate, (VokVector4{1, 2, 3, 3}));
    EXPECT_EQ(scene.Joint("a")->rotation, (EulerRotation{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(First<VokPose>(scene.World())->GetElement(0).translate, (VokVector4{1, 2, 3, 3}));
    EXPECT_EQ(KeyValues(scene.World()), (std::vector<float>{1, 2, 3, 4, 5, 6}));
}

TEST(TurnWorld, ATopmostJointMovesByTheTurnsMatrix) {
    for (const int target : {kYUp, kZUp}) {
        TestScene scene(R"(<scene><node name="n"><translate>1 2 3</translate>
            <joint name="a"><translate>1 2 3</translate><scale>4 5 6</scale>
            <joint name="b"><translate>1 2 3</translate><rotEul>0.1 0.2 0.3</rotEul></joint>
            </joint></node></scene>)",
                        target == kYUp ? R"(upaxis="z")" : R"(upaxis="y")");
        TurnWorld(scene.World(), target, true);
        EXPECT_EQ(BitsOf(scene.Joint("a")->translate), target == kYUp ? kPointToY : kPointToZ);
        EXPECT_EQ(scene.Joint("a")->scale, (VokVector3{4, 5, 6}));
        EXPECT_EQ(scene.Joint("b")->translate, (VokVector4{1, 2, 3, 3}));
        EXPECT_EQ(scene.Joint("b")->rotation, (EulerRotation{0.1f, 0.2f, 0.3f}));
        const auto& node = dynamic_cast<VokNode&>(*scene.Joint("a")->GetParent());
        EXPECT_EQ(node.translate, (VokVector4{1, 2, 3, 3}));
        EXPECT_EQ(node.rotation, EulerRotation{});
    }
}

TEST(TurnWorld, ATopmostJointsRotationIsComposedInItsOwnOrder) {
    struct Case {
        RotationOrder order;
        int target;
        std::array<std::uint32_t, 3> angles;
    };
    const Case cases[] = {
        {RotationOrder::xyz, kYUp, {0xBEBCBF6A, 0x3F3FFF79, 0x3F89D4B0}},
        {RotationOrder::yzx, kYUp, {0xBFA2A972, 0xBF333330, 0x3F8CCCCD}},
        {RotationOrder::zxy, kYUp, {0xBF51BEEF, 0xBF8FC2E5, 0x401555C9}},
        {RotationOrder::xzy, kYUp, {0xBFF51566, 0x3F998B5A, 0x3E97D452}},
        {RotationOrder::yxz, kYUp, {0xBEE5796F, 0x3F38B48F, 0x3F9E4C7C}},
        {RotationOrder::zyx, kYUp, {0xBFA2A974, 0xBF333330, 0x3F8CCCCD}},
        {RotationOrder::xyz, kZUp, {0x403177ED, 0xBF3FFF7C, 0xBF89D4B0}},
        {RotationOrder::yzx, kZUp, {0x3FEF7642, 0xBF333331, 0x3F8CCCCD}},
        {RotationOrder::zxy, kZUp, {0x3F51BEF2, 0xC0012E67, 0xBF4EE842}},
        {RotationOrder::xzy, kZUp, {0x3F9D0A4F, 0xBF998B5A, 0xBE97D44C}},
        {RotationOrder::yxz, kZUp, {0x3EE57970, 0xC01AE2B6, 0x3FF3D338}},
        {RotationOrder::zyx, kZUp, {0x3FEF7640, 0xBF333330, 0x3F8CCCCD}},
    };
    for (const Case& wanted : cases) {
        const std::string order(GetRotationOrderText(wanted.order));
        TestScene scene("<scene><joint name=\"a\"><rotEul rotOrd=\"" + order +
                            R"(">0.3 -0.7 1.1</rotEul><rotAxisEul rotOrd="yzx">0.1 0.2 0.3
            </rotAxisEul><jointOrientEul rotOrd="zxy">0.4 0.5 0.6</jointOrientEul></joint></scene>
            <pose name="p" bindPose="1"><element target="||a"><rotEul rotOrd=")" +
                            order + R"(">0.3 -0.7 1.1</rotEul></element></pose>)",
                        wanted.target == kYUp ? R"(upaxis="z")" : R"(upaxis="y")");
        TurnWorld(scene.World(), wanted.target, true);
        const VokJoint& joint = *scene.Joint("a");
        EXPECT_EQ(BitsOf(joint.rotation), wanted.angles) << order;
        EXPECT_EQ(joint.rotation.order, wanted.order);
        EXPECT_EQ(joint.rotationAxis, (EulerRotation{0.1f, 0.2f, 0.3f, RotationOrder::yzx}));
        EXPECT_EQ(joint.jointOrient, (EulerRotation{0.4f, 0.5f, 0.6f, RotationOrder::zxy}));
        const VokPose::PoseElement& element = First<VokPose>(scene.World())->GetElement(0);
        EXPECT_EQ(BitsOf(element.rotation), wanted.angles) << order;
        EXPECT_EQ(element.rotation.order, wanted.order);
    }
}

TEST(TurnWorld, AMiddleAngleThatRoundingTakesPastAPoleIsNotANumberInTheFile) {
    TestScene scene(R"(<scene><joint name="a"><rotEul rotOrd="zyx">0.9 1.5707964 0.75</rotEul>
        </joint></scene>)",
                    R"(upaxis="z")");
    TurnWorld(scene.World(), kYUp, true);
    const EulerRotation& rotation = scene.Joint("a")->rotation;
    EXPECT_TRUE(std::isnan(rotation.y));
    EXPECT_EQ(BitsOf(rotation.x, 0, rotation.z),
              (std::array<std::uint32_t, 3>{0x3FF5B462, 0, 0xBFC90FDB}));
    // Nothing of the rotation is a number then.
    const std::string bytes =
        WriteBytes(*scene.Build({"a"}), 1, "transforms[0].rotation[0] is not a number");
    EXPECT_NE(bytes.find(FromHex("7FC00000 7FC00000 7FC00000 7FC00000")), std::string::npos);
}

TEST(TurnWorld, AJointOutsideTheHierarchyIsTurnedInPlace) {
    // Only what stands in the hierarchy comes under the new node; topmost joints are those of the
    // whole world.
    TestScene scene(R"(<scene><joint name="a"/></scene>
        <scene name="other"><joint name="b"><translate>1 2 3</translate></joint></scene>)",
                    R"(upaxis="z")");
    TurnWorld(scene.World(), kYUp, true);
    EXPECT_EQ(BitsOf(scene.Joint("b")->translate), kPointToY);
    EXPECT_EQ(scene.Joint("b")->GetParent()->GetName(), "other");
}

TEST(TurnWorld, PosesOfTopmostJointsTurnWithThem) {
    const std::string moved = "<translate>1 2 3</translate><scale>4 5 6</scale></element>";
    TestScene scene(R"(<scene><node name="n"/><joint name="a"><joint name="b"/></joint></scene>
        <pose name="p" bindPose="1"><element target="||a">)" +
                        moved + R"(<element target="||n">)" + moved +
                        R"(<element target="||a|b">)" + moved + R"(<element target="||a">)" +
                        moved + "</pose>",
                    R"(upaxis="z")");
    TurnWorld(scene.World(), kYUp, true);
    const VokPose& pose = *First<VokPose>(scene.World());
    EXPECT_EQ(BitsOf(pose.GetElement(0).translate), kPointToY);
    EXPECT_EQ(pose.GetElement(0).scale, (VokVector3{4, 5, 6}));
    EXPECT_EQ(pose.GetElement(1).translate, (VokVector4{1, 2, 3, 3}));
    EXPECT_EQ(pose.GetElement(2).translate, (VokVector4{1, 2, 3, 3}));
    EXPECT_EQ(BitsOf(pose.GetElement(3).translate), kPointToY);
}

TEST(TurnWorld, BindMatricesOfAllSkinsAreTakenIntoTheTurnedSpace) {
    for (const int target : {kYUp, kZUp}) {
        TestScene scene(R"(<scene><node name="n"/><skin name="s">
            <influence target="||n"><bindInverse>1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16
            </bindInverse></influence><influence target="||n"/></skin></scene>)",
                        target == kYUp ? R"(upaxis="z")" : R"(upaxis="y")");
        TurnWorld(scene.World(), target, true);
        const VokSkin& skin = *First<VokSkin>(scene.World());
        ASSERT_EQ(skin.GetInfluenceCount(), 2u);
        ASSERT_TRUE(skin.GetInfluence(0).bindInverse);
        const VokMatrix& turned = *skin.GetInfluence(0).bindInverse;
        // The inverse of a quarter turn swaps the second and the third row.
        for (unsigned column = 0; column < 4; ++column) {
            const auto value = static_cast<float>(column);
            const float sign = target == kYUp ? 1.0f : -1.0f;
            EXPECT_FLOAT_EQ(turned[0][column], 1 + value);
            EXPECT_NEAR(turned[1][column], sign * (9 + value), 1e-5);
            EXPECT_NEAR(turned[2][column], -sign * (5 + value), 1e-5);
            EXPECT_FLOAT_EQ(turned[3][column], 13 + value);
        }
        EXPECT_FALSE(skin.GetInfluence(1).bindInverse);
    }
}

TEST(TurnWorld, KeysOfATopmostJointTurnFromZToYAlone) {
    for (const int target : {kYUp, kZUp}) {
        TestScene scene(
            R"(<scene><joint name="a"/></scene>)" + Animation("||a", "translate", kSamples),
            target == kYUp ? R"(upaxis="z")" : R"(upaxis="y")");
        TurnWorld(scene.World(), target, true);
        EXPECT_EQ(KeyValues(scene.World()), target == kYUp
                                                ? (std::vector<float>{1, 3, -2, 4, 6, -5})
                                                : (std::vector<float>{1, 2, 3, 4, 5, 6}));
    }
}

TEST(TurnWorld, KeysOfWhatIsNoTopmostJointStay) {
    for (const char* target : {"||n", "||a|b"}) {
        TestScene scene(R"(<scene><node name="n"/><joint name="a"><joint name="b"/></joint>
            </scene>)" + Animation(target, "translate", kSamples),
                        R"(upaxis="z")");
        TurnWorld(scene.World(), kYUp, true);
        EXPECT_EQ(KeyValues(scene.World()), (std::vector<float>{1, 2, 3, 4, 5, 6})) << target;
    }
}

TEST(TurnWorld, AnimationThatCannotTurnIsNamedByItsNewPath) {
    TestScene scene(
        R"(<scene><joint name="a"/>)" +
            Animation("||a", "translate",
                      R"(<animData interp="Timestep" numKeys="1" keyStride="4" duration="1">
                         <keyValues>1 2 3 4</keyValues></animData>)") +
            "</scene>",
        R"(upaxis="z")");
    EXPECT_EQ(FailureText([&] { TurnWorld(scene.World(), kYUp, true); }),
              "Unexpected stride for anim channel: translate "
              "{||__VokChangeUpAxis__magic_node|anim|c}");
}
