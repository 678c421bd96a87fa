#include "Runtime/SkeletonSample.h"

namespace {

class SkeletonRead : public testing::Test {
  protected:
    std::uint32_t Joint(const char* name) const {
        return static_cast<std::uint32_t>(skeleton_find_joint_named(header, name));
    }

    const SkeletonSample sample = SkeletonSample::Load("parts-little");
    const skeleton_header* const header = sample.Header();
};

}  // namespace

TEST(SkeletonHash, IsThatOfTheLowerCasedNameBehindTheLastColon) {
    EXPECT_EQ(skeleton_hash_joint_name("hips"), 0x811C56D0u);
    EXPECT_EQ(skeleton_hash_joint_name("a:b:Hips"), 0x811C56D0u);
    EXPECT_EQ(skeleton_hash_joint_name(""), 0xFFFFFFFFu);
    EXPECT_EQ(skeleton_hash_joint_name("a:"), 0xFFFFFFFFu);
}

TEST(SkeletonHash, OfAChannelKeepsWhatStandsBeforeAColon) {
    EXPECT_EQ(skeleton_hash_lower("HIPS", 4), 0x811C56D0u);
    EXPECT_NE(skeleton_hash_lower("a:hips", 6), 0x811C56D0u);
    EXPECT_EQ(skeleton_hash_exact("hips", 4), 0x811C56D0u);
    EXPECT_NE(skeleton_hash_exact("Hips", 4), 0x811C56D0u);
}

TEST(SkeletonHash, BytesAboveAsciiAreUnsignedAndKeepTheirCase) {
    EXPECT_EQ(skeleton_hash_lower("\xC4", 1), skeleton_hash_exact("\xC4", 1));
    EXPECT_EQ(skeleton_hash_exact("\xC4", 1), 0xB1F416DBu);
}

TEST_F(SkeletonRead, JointsAreFoundByTheirNamesInTheDocumentsEncoding) {
    EXPECT_EQ(Joint("t:Hips"), 0u);
    EXPECT_EQ(Joint("SPINE"), 1u);
    EXPECT_EQ(Joint("Finger"), 10u);
    EXPECT_NE(skeleton_find_joint_named(header,
                                        "H\xFC"
                                        "ft"),
              -1);
    EXPECT_EQ(skeleton_find_joint_named(header,
                                        "H\xC3\xBC"
                                        "ft"),
              -1)
        << "UTF-8";
    EXPECT_EQ(skeleton_find_joint_named(header, "Toe"), -1);
    EXPECT_EQ(skeleton_find_joint(header, 0), -1);
    EXPECT_EQ(skeleton_find_joint(header, 0xFFFFFFFFu), -1);
}

TEST_F(SkeletonRead, AJointWithoutARecordIsNotFound) {
    const SkeletonSample roots = SkeletonSample::Load("roots");
    EXPECT_EQ(skeleton_find_joint_named(roots.Header(), ""), -1);
    EXPECT_EQ(skeleton_find_joint_named(roots.Header(), "End"), 2);
}

TEST_F(SkeletonRead, LevelsOfDetailCannotBeAskedOutOfRange) {
    ASSERT_EQ(skeleton_lod_count(header), 2u);
    const std::uint32_t count = header->joint_count;
    EXPECT_EQ(skeleton_lod_limit(header, 0), count - 3);
    EXPECT_EQ(skeleton_lod_limit(header, 1), count - 1);
    EXPECT_EQ(skeleton_lod_limit(header, 2), count) << "nothing is dropped";
    EXPECT_EQ(skeleton_lod_limit(header, 0xFFFFFFFFu), count);
    EXPECT_EQ(skeleton_lod_remap(header, 2), nullptr);
    const std::uint32_t arm = Joint("arm");
    const std::uint32_t hand = Joint("hand");
    const std::uint32_t finger = Joint("finger");
    EXPECT_EQ(skeleton_lod_stand_in(header, 0, finger), arm);
    EXPECT_EQ(skeleton_lod_stand_in(header, 1, finger), hand);
    EXPECT_EQ(skeleton_lod_stand_in(header, 2, finger), finger);
    EXPECT_EQ(skeleton_lod_stand_in(header, 0, arm), arm);
    EXPECT_EQ(skeleton_lod_stand_in(header, 0, count), SKELETON_NO_JOINT);
}

TEST_F(SkeletonRead, ASkeletonWithoutLevelsHasNoRowsAndKeepsAllJoints) {
    const SkeletonSample biped = SkeletonSample::Load("biped");
    const std::uint32_t rows = skeleton_lod_count(biped.Header());
    EXPECT_EQ(skeleton_lod_limit(biped.Header(), rows), biped.Header()->joint_count);
    SkeletonSample bare = SkeletonSample::Load("roots");
    const_cast<skeleton_header*>(bare.Header())->lods = 0;
    EXPECT_EQ(skeleton_lod_count(bare.Header()), 0u);
    EXPECT_EQ(skeleton_lod_remap(bare.Header(), 0), nullptr);
    EXPECT_EQ(skeleton_lod_stand_in(bare.Header(), 0, 1), 1u);
}

TEST_F(SkeletonRead, ARowThatLeavesNoJointHasTheLimitNought) {
    const SkeletonSample roots = SkeletonSample::Load("roots");
    ASSERT_EQ(skeleton_lod_count(roots.Header()), 2u);
    EXPECT_EQ(skeleton_lod_limit(roots.Header(), 0), 2u) << "each root's row counts the whole set";
    EXPECT_EQ(skeleton_lod_limit(roots.Header(), 1), 3u);
}

TEST_F(SkeletonRead, ItemsAreAskedByPlaceAndKind) {
    const skeleton_procedural* procedural = sample.Procedural();
    ASSERT_EQ(skeleton_item_count(procedural), 4u);
    EXPECT_NE(skeleton_item_driven_keys(procedural, 1), nullptr);
    EXPECT_EQ(skeleton_item_constraints(procedural, 1), nullptr);
    EXPECT_EQ(skeleton_item_driven_keys(procedural, 2), nullptr);
    EXPECT_NE(skeleton_item_constraints(procedural, 3), nullptr);
    EXPECT_EQ(skeleton_item(procedural, 4), nullptr);
    EXPECT_EQ(skeleton_item_constraints(procedural, 4), nullptr);
    const SkeletonSample roots = SkeletonSample::Load("roots");
    EXPECT_EQ(roots.Procedural(), nullptr);
    EXPECT_EQ(skeleton_item_count(roots.Procedural()), 0u);
    EXPECT_EQ(skeleton_item(roots.Procedural(), 0), nullptr);
}

TEST_F(SkeletonRead, DrivenRotationsAreFoundByTheirPlace) {
    const skeleton_driven_keys& keys = sample.Keys(1);
    skeleton_driven_rotation rotation;
    ASSERT_EQ(skeleton_driven_row_count(&keys), 3u);
    ASSERT_TRUE(skeleton_find_driven_rotation(&keys, 0, &rotation));
    EXPECT_EQ(rotation.joint, Joint("twist"));
    EXPECT_EQ(rotation.rotation_axis[3], 1.0f);
    ASSERT_TRUE(skeleton_find_driven_rotation(&keys, 2, &rotation));
    EXPECT_EQ(rotation.joint, Joint("spine"));
    EXPECT_EQ(rotation.rotation_order, 5u);
    EXPECT_FALSE(skeleton_find_driven_rotation(&keys, 3, &rotation));
}

TEST_F(SkeletonRead, DrivenRotationsAreUnknownWhereRowsAreMissing) {
    skeleton_driven_rotation rotation;
    auto& keys = const_cast<skeleton_driven_keys&>(sample.Keys(1));
    ++keys.object_count;
    EXPECT_FALSE(skeleton_find_driven_rotation(&keys, 0, &rotation));
}

TEST_F(SkeletonRead, CurvesAreClampedWhereTheCallerWantsIt) {
    const skeleton_driven_output* output = skeleton_driven_output_at(&sample.Keys(1), 0);
    const skeleton_driven_curve* curve = skeleton_driven_curve_at(output, 0);
    EXPECT_EQ(output->curve_count, 2u);
    EXPECT_EQ(skeleton_driven_curve_at(output, 2), nullptr);
    EXPECT_EQ(skeleton_driven_output_at(&sample.Keys(1), sample.Keys(1).output_count), nullptr);
    EXPECT_EQ(skeleton_driven_target_of(output)->type, SKELETON_CHANNEL_ROTATION);
    // 1 + 2 d + 3 d^2 + 4 d^3 from 0 to 1, then 10 + d^3 to 3.
    EXPECT_EQ(skeleton_driven_value(curve, 0.5f, SKELETON_CLAMP_BOTH), 1 + 1 + 0.75f + 0.5f);
    EXPECT_EQ(skeleton_driven_value(curve, 1, SKELETON_CLAMP_BOTH), 10.0f);
    EXPECT_EQ(skeleton_driven_value(curve, 3, 0), 18.0f);
    EXPECT_EQ(skeleton_driven_value(curve, 4, SKELETON_CLAMP_BOTH), 18.0f);
    EXPECT_EQ(skeleton_driven_value(curve, 4, SKELETON_CLAMP_BEFORE), 37.0f);
    EXPECT_EQ(skeleton_driven_value(curve, -1, SKELETON_CLAMP_BEFORE), 1.0f);
    EXPECT_EQ(skeleton_driven_value(curve, -1, SKELETON_CLAMP_AFTER), 1.0f - 2 + 3 - 4);
}

TEST_F(SkeletonRead, OfTwoEqualTimesTheLaterCounts) {
    const skeleton_driven_output* output = skeleton_driven_output_at(&sample.Keys(0), 0);
    const skeleton_driven_curve* curve = skeleton_driven_curve_at(output, 0);  // 0 0.5 0.5 1
    EXPECT_EQ(skeleton_driven_segment(curve, 0.4f), 0u);
    EXPECT_EQ(skeleton_driven_segment(curve, 0.5f), 2u);
    EXPECT_EQ(skeleton_driven_value(curve, 0.5f, 0), 0.35f);
}

TEST_F(SkeletonRead, ASegmentIsAHermiteCurve) {
    const skeleton_driven_output* output = skeleton_driven_output_at(&sample.Keys(1), 0);
    const skeleton_driven_curve* curve = skeleton_driven_curve_at(output, 0);
    skeleton_hermite hermite;
    ASSERT_TRUE(skeleton_driven_hermite(curve, 1, &hermite));
    EXPECT_EQ(hermite.begin, 1.0f);
    EXPECT_EQ(hermite.end, 3.0f);
    EXPECT_EQ(hermite.begin_value, 10.0f);
    EXPECT_EQ(hermite.end_value, 18.0f);
    EXPECT_EQ(hermite.begin_slope, 0.0f);
    EXPECT_EQ(hermite.end_slope, 12.0f);
    EXPECT_FALSE(skeleton_driven_hermite(curve, 2, &hermite));
}

TEST_F(SkeletonRead, SlotsLeadToJoints) {
    const skeleton_joint_constraints& constraints = sample.Constraints(2);
    const skeleton_aim_constraint* aim = skeleton_aims(&constraints);
    ASSERT_EQ(constraints.aim_count, 1u);
    EXPECT_EQ(skeleton_slot_joint(&constraints, aim->common.constrained), Joint("eye"));
    EXPECT_EQ(skeleton_slot_joint(&constraints, aim->common.target), Joint("hand"));
    EXPECT_EQ(skeleton_slot_joint(&constraints, aim->up_object), Joint("spine"));
    EXPECT_EQ(skeleton_slot_joint(&constraints, SKELETON_NO_JOINT), SKELETON_NO_JOINT);
    const std::uint32_t slots = constraints.constrained_count + constraints.target_count;
    EXPECT_NE(skeleton_slot_joint(&constraints, slots - 1), SKELETON_NO_JOINT);
    EXPECT_EQ(skeleton_slot_joint(&constraints, slots), SKELETON_NO_JOINT);
    EXPECT_EQ(skeleton_translations(&constraints)->offset[1], 0.1f);
    EXPECT_EQ(skeleton_scales(&constraints)->offset[0], 1.0f);
    EXPECT_EQ(skeleton_orientations(&constraints)[2].weight, 0.25f);
    EXPECT_EQ(skeleton_parents(&constraints)[1].translation[1], 0.1f);
    const skeleton_aim_constraint* second = skeleton_aims(&sample.Constraints(3));
    EXPECT_EQ(second->up_object, SKELETON_NO_JOINT);
}
