#include "Runtime/SkeletonSample.h"

TEST(SkeletonSwap, TurnsTheOneFormIntoTheOther) {
    const std::string little = SkeletonSample::Read("parts-little");
    const std::string big = SkeletonSample::Read("parts-big");
    for (const auto& [from, to] : {std::pair(little, big), std::pair(big, little)}) {
        SkeletonSample sample(from);
        ASSERT_TRUE(skeleton_swap(sample.Data(), sample.Size(), nullptr));
        EXPECT_EQ(sample.Bytes(), to);
    }
}

TEST(SkeletonSwap, TwiceGivesTheSameBytes) {
    for (const char* name : {"parts-little", "parts-big", "roots", "biped"}) {
        const std::string bytes = SkeletonSample::Read(name);
        SkeletonSample sample(bytes);
        ASSERT_TRUE(skeleton_swap(sample.Data(), sample.Size(), nullptr));
        EXPECT_NE(sample.Bytes(), bytes) << name;
        ASSERT_TRUE(skeleton_swap(sample.Data(), sample.Size(), nullptr));
        EXPECT_EQ(sample.Bytes(), bytes) << name;
    }
}

TEST(SkeletonSwap, LeavesADamagedFileAsItIs) {
    SkeletonSample sample = SkeletonSample::Load("parts-little");
    const_cast<skeleton_joint*>(skeleton_joints(sample.Header()))[3].parent = 3;
    const std::string bytes = sample.Bytes();
    skeleton_fault fault;
    EXPECT_FALSE(skeleton_swap(sample.Data(), sample.Size(), &fault));
    EXPECT_STREQ(fault.text, "joints[3].parent is 3, not below 3");
    EXPECT_EQ(sample.Bytes(), bytes);
    EXPECT_FALSE(skeleton_swap(sample.Data(), 47, nullptr));
}

TEST(SkeletonSwap, OnlyTheByteOrderTellsTheFormsApart) {
    SkeletonSample sample = SkeletonSample::Load("parts-little");
    EXPECT_FALSE(skeleton_is_reversed(sample.Data(), sample.Size()));
    ASSERT_TRUE(skeleton_swap(sample.Data(), sample.Size(), nullptr));
    EXPECT_TRUE(skeleton_is_reversed(sample.Data(), sample.Size()));
    EXPECT_FALSE(skeleton_is_reversed(sample.Data(), 15)) << "too short to tell";
    skeleton_fault fault;
    EXPECT_EQ(skeleton_find_faults(sample.Data(), sample.Size(), &fault, 1), 0u);
    EXPECT_FALSE(skeleton_verify(sample.Data(), sample.Size(), &fault));
    EXPECT_EQ(fault.offset, 0x0Cu);
    EXPECT_STREQ(fault.text, "joints shows the other byte order");
}
