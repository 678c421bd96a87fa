#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/ProceduralTestTools.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace {

const std::string kScene = R"(<scene><joint name="root"><joint name="a"/><joint name="b">
    <rotEul rotOrd="zyx">0 0 0</rotEul></joint><joint name="c"/></joint></scene>
    <scene name="apart"><node name="ctl"/></scene><material name="Skin" url=""/>
    <anim name="k" target="||root|a"><animChannel name="" channel="rotateX"
    inputObject="||root|b" inputChannel="rotateY"><animData interp="QELCurve" numKeys="3"
    keyStride="4"><keyValues>1 2 3 4 10 0 0 1 0 0 0 0</keyValues><keyTimes>0 1 3</keyTimes>
    </animData></animChannel></anim>)" +
                           DrivenAnim("|Skin", "Wet3", "|apart|ctl", "Rain") +
                           Constraint("aimConstraint", "x", "||root|c", {"||root|a", "||root|b"},
                                      "<aim>1 2 3</aim><globalup>0 1 0</globalup>");

/// A file in memory as an engine holds it.
class ProceduralFileStructs : public testing::Test {
  protected:
    ProceduralFileStructs() {
        const std::string bytes = RigScene(kScene).WithConstraints().Bytes(kBigEndianHere);
        image.resize(bytes.size() / sizeof(Line) + 1);
        std::memcpy(image.data(), bytes.data(), bytes.size());
        const auto* header = reinterpret_cast<const skeleton_header*>(image.data());
        procedural = Follow<skeleton_procedural>(header->procedural);
    }
    ~ProceduralFileStructs() noexcept override = default;

    template <class T>
    static const T* Follow(const skeleton_offset& offset) {
        return static_cast<const T*>(skeleton_follow(&offset));
    }
    template <class T>
    const T& Item(std::uint32_t place) const {
        return *static_cast<const T*>(skeleton_item(procedural, place));
    }

    struct alignas(16) Line {
        char bytes[16];
    };
    std::vector<Line> image;
    const skeleton_procedural* procedural = nullptr;
};

}  // namespace

TEST_F(ProceduralFileStructs, ItemsAndExternalChannelsReadInPlace) {
    EXPECT_EQ(std::string(procedural->magic, 4), "PJ01");
    ASSERT_EQ(procedural->item_count, 2u);
    const auto* kinds = Follow<std::uint32_t>(procedural->item_kinds);
    EXPECT_EQ(kinds[0], SKELETON_ITEM_DRIVEN_KEYS);
    EXPECT_EQ(kinds[1], SKELETON_ITEM_JOINT_CONSTRAINTS);
    const auto* input = Follow<skeleton_external_channel>(procedural->external_inputs);
    const auto* output = Follow<skeleton_external_channel>(procedural->external_outputs);
    EXPECT_EQ(input->channel_hash, NaiveHash("rain"));
    EXPECT_EQ(output->channel_hash, NaiveHash("Wet"));
    EXPECT_EQ(output->kind, SKELETON_EXTERNAL_MATERIAL);
}

TEST_F(ProceduralFileStructs, DrivenKeysReadInPlace) {
    const auto& keys = Item<skeleton_driven_keys>(0);
    EXPECT_EQ(std::string(keys.magic, 4), "DK04");
    EXPECT_EQ(keys.driven_object_count, 1u);
    const auto* objects = Follow<skeleton_driven_object>(keys.objects);
    EXPECT_EQ(objects[0].joint, 1);
    EXPECT_EQ(objects[1].joint, 2);
    EXPECT_EQ(objects[1].rotation_order, 5);
    EXPECT_EQ(Follow<float>(keys.joint_orients)[7], 1.0f);
    const auto* outputs = Follow<skeleton_driven_output>(keys.outputs);
    const auto* target = Follow<skeleton_driven_target>(outputs[1].targets);
    EXPECT_EQ(target->type, SKELETON_CHANNEL_EXTERNAL);
    EXPECT_EQ(target->component, 3);
    const auto* curve = Follow<skeleton_driven_curve>(outputs[0].curves);
    EXPECT_EQ(curve->input_index, 1u);
    EXPECT_EQ(curve->input_component, 1);
    EXPECT_EQ(skeleton_driven_value(curve, 0, 0), 1.0f);
    EXPECT_EQ(skeleton_driven_value(curve, 0.5f, 0), 1 + 1 + 0.75f + 0.5f);
    EXPECT_EQ(skeleton_driven_value(curve, 1, 0), 10.0f);
    EXPECT_EQ(skeleton_driven_value(curve, 3, 0), 18.0f);
}

TEST_F(ProceduralFileStructs, ConstraintsReadInPlace) {
    const auto& constraints = Item<skeleton_joint_constraints>(1);
    EXPECT_EQ(std::string(constraints.magic, 4), "JC01");
    const auto* joints = Follow<std::uint16_t>(constraints.joints);
    ASSERT_EQ(constraints.aim_count, 2);
    EXPECT_EQ(constraints.reserved, 0);
    const auto* aims = Follow<skeleton_aim_constraint>(constraints.aims);
    EXPECT_EQ(aims[0].common.flags, SKELETON_CONSTRAINT_FIRST_TARGET);
    EXPECT_EQ(aims[1].common.flags, SKELETON_CONSTRAINT_LAST_TARGET);
    EXPECT_EQ(joints[aims[1].common.constrained], 3);
    EXPECT_EQ(joints[aims[1].common.target], 2);
    EXPECT_EQ(aims[1].aim[1], 2.0f);
    EXPECT_EQ(aims[1].global_up[1], 1.0f);
    EXPECT_EQ(aims[1].world_up, SKELETON_WORLD_UP_VECTOR);
    EXPECT_EQ(aims[1].up_object, SKELETON_NO_JOINT);
}
