#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/RigbakeTestTools.h"
#include "VoktRigbake/SkeletonFileReader.h"

#include <BiffLib/CBlock.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <gtest/gtest.h>

#include <bit>
#include <random>

namespace {

using Remap = std::vector<int>;
using Hashes = std::vector<SkeletonFileReader::Hash>;

constexpr const char* kOneJoint =
    R"(<scene><joint name="hips"><translate>1 2 3</translate></joint></scene>)";

constexpr const char* kThreeJoints = R"(<scene><joint name="Root">
    <joint name="b"><translate>0.5 0 -1</translate></joint>
    <joint name="a"><scaleCompensate>false</scaleCompensate><scale>2 1 1</scale></joint></joint>
    </scene><objset name="skelLodSet1" type="set"><member path="||Root|b" membership=""/></objset>)";

/// A skeleton of unrelated joints with these hashes; the joints are the scene's.
SkeletonData MakeHashed(const VokJoint& joint, const std::vector<std::uint32_t>& hashes) {
    SkeletonData skeleton;
    for (const std::uint32_t hash : hashes) {
        auto entry = std::make_unique<SkeletonJoint>();
        entry->joint = &joint;
        entry->nameHash = hash;
        entry->index = static_cast<std::int32_t>(skeleton.joints.size());
        skeleton.joints.push_back(std::move(entry));
    }
    skeleton.signature = ComputeSkeletonSignature(skeleton);
    return skeleton;
}

std::string FlatSkeleton(int jointCount) {
    std::string body = "<scene><joint name=\"root\">";
    for (int i = 1; i < jointCount; ++i) body += "<joint name=\"j" + std::to_string(i) + "\"/>";
    return body + "</joint></scene>";
}

void ExpectBytes(const std::string& bytes, std::string_view hex) {
    EXPECT_EQ(ToHex(bytes), ToHex(FromHex(hex)));
}

}  // namespace

TEST(SkeletonFile, OneJointLittleEndian) {
    TestScene scene(kOneJoint);
    const std::string bytes = WriteBytes(*scene.Build({"hips"}), Biff::kLittleEndian);
    ExpectBytes(bytes,
                "53 4B 30 38  45 A3 3A E9  00 00 01 00  24 00 00 00"
                "30 00 00 00  5C 00 00 00  00 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "01 00 FF FF  FF FF FF FF  00 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                "00 00 80 3F  00 00 00 40  00 00 40 40  00 00 00 00"
                "00 00 80 3F  00 00 80 3F  00 00 80 3F  00 00 00 00"
                "D0 56 1C 81  00 00 00 00");
    EXPECT_EQ(bytes.size(), 120u);
}

TEST(SkeletonFile, OneJointBigEndian) {
    TestScene scene(kOneJoint);
    ExpectBytes(WriteBytes(*scene.Build({"hips"}), Biff::kBigEndian),
                "53 4B 30 38  E9 3A A3 45  00 00 00 01  00 00 00 24"
                "00 00 00 30  00 00 00 5C  00 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "00 01 FF FF  FF FF FF FF  00 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                "3F 80 00 00  40 00 00 00  40 40 00 00  00 00 00 00"
                "3F 80 00 00  3F 80 00 00  3F 80 00 00  00 00 00 00"
                "81 1C 56 D0  00 00 00 00");
}

TEST(SkeletonFile, ThreeJointsWithALevelLittleEndian) {
    TestScene scene(kThreeJoints);
    ExpectBytes(WriteBytes(*scene.Build({"Root"}), Biff::kLittleEndian),
                "53 4B 30 38  B2 A1 75 73  00 00 03 00  24 00 00 00"
                "40 00 00 00  CC 00 00 00  E8 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "01 00 FF FF  FF FF 01 00  00 00 00 00  02 00 FF FF"
                "01 00 00 00  FF FF FF FF  00 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "00 00 80 3F  00 00 80 3F  00 00 80 3F  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "00 00 00 40  00 00 80 3F  00 00 80 3F  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 80 3F"
                "00 00 00 3F  00 00 00 00  00 00 80 BF  00 00 00 00"
                "00 00 80 3F  00 00 80 3F  00 00 80 3F  00 00 00 00"
                "BC 41 48 17  01 00 00 00  06 10 41 8E  02 00 00 00"
                "A4 06 0B E9  00 00 00 00  00 00 00 00  00 00 00 00"
                "01 00 00 00  01 00 00 00  01 00 00 00");
}

TEST(SkeletonFile, ThreeJointsWithALevelBigEndian) {
    TestScene scene(kThreeJoints);
    ExpectBytes(WriteBytes(*scene.Build({"Root"}), Biff::kBigEndian),
                "53 4B 30 38  73 75 A1 B2  00 00 00 03  00 00 00 24"
                "00 00 00 40  00 00 00 CC  00 00 00 E8  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "00 01 FF FF  FF FF 00 01  00 00 00 00  00 02 FF FF"
                "00 01 00 00  FF FF FF FF  00 00 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "3F 80 00 00  3F 80 00 00  3F 80 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                "40 00 00 00  3F 80 00 00  3F 80 00 00  00 00 00 00"
                "00 00 00 00  00 00 00 00  00 00 00 00  3F 80 00 00"
                "3F 00 00 00  00 00 00 00  BF 80 00 00  00 00 00 00"
                "3F 80 00 00  3F 80 00 00  3F 80 00 00  00 00 00 00"
                "17 48 41 BC  00 00 00 01  8E 41 10 06  00 00 00 02"
                "E9 0B 06 A4  00 00 00 00  00 00 00 00  00 00 00 00"
                "00 00 00 01  00 01 00 00  00 01 00 00");
}

TEST(SkeletonFile, FlagIsSetForScaleCompensateAlone) {
    TestScene scene(
        R"(<scene><joint name="r"><joint name="a"><scaleCompensate>true</scaleCompensate>
        </joint><joint name="b"><scaleCompensate>false</scaleCompensate></joint><joint name="c"/>
        </joint></scene>)");
    scene.Joint("c")->parentEffect = ParentEffect::NoInherit;
    const SkeletonFileReader file(WriteBytes(*scene.Build({"r"}), 0), false);
    EXPECT_EQ(file.joints[0].flags, 1);
    EXPECT_EQ(file.joints[1].flags, 1);
    EXPECT_EQ(file.joints[2].flags, 0);
    EXPECT_EQ(file.joints[3].flags, 0);
}

TEST(SkeletonFile, NotANumberIsWrittenAsOneValue) {
    TestScene scene(kOneJoint);
    VokJoint& joint = *scene.Joint("hips");
    joint.translate.x = std::bit_cast<float>(0xFFC12345u);
    joint.scale.y = std::bit_cast<float>(0x7F812345u);
    const std::string bytes = WriteBytes(*scene.Build({"hips"}), Biff::kLittleEndian,
                                         "transforms[0].translation[0] is not a number");
    EXPECT_EQ(ToHex(bytes.substr(80, 4)), ToHex(FromHex("00 00 C0 7F")));
    EXPECT_EQ(ToHex(bytes.substr(100, 4)), ToHex(FromHex("00 00 C0 7F")));
}

TEST(SkeletonFile, HashTableIsSortedAsUnsigned) {
    TestScene scene(kOneJoint);
    const SkeletonData skeleton =
        MakeHashed(*scene.Joint("hips"), {0x80000000u, 5, 0xFFFFFFFEu, 1});
    const SkeletonFileReader file(WriteBytes(skeleton, 1), true);
    EXPECT_EQ(file.hashes, (Hashes{{1, 3}, {5, 1}, {0x80000000u, 0}, {0xFFFFFFFEu, 2}}));
}

TEST(SkeletonFile, HashesWithoutARecordLeaveFillersAtTheEnd) {
    TestScene scene(kOneJoint);
    const SkeletonData skeleton = MakeHashed(*scene.Joint("hips"), {7, 0, 7, 0xFFFFFFFFu, 3});
    const SkeletonFileReader file(WriteBytes(skeleton, 0), false);
    EXPECT_EQ(file.hashes,
              (Hashes{{3, 4}, {7, 0}, {0xFFFFFFFFu, -1}, {0xFFFFFFFFu, -1}, {0xFFFFFFFFu, -1}}));
}

TEST(SkeletonFile, JointWithoutANameHasNoHashRecord) {
    TestScene scene(R"(<scene><joint name="x:y"><joint name=""/></joint></scene>)");
    const SkeletonFileReader file(WriteBytes(*scene.Build({"x:y"}), 0), false);
    EXPECT_EQ(file.hashes, (Hashes{{NaiveHash("y"), 0}, {0xFFFFFFFFu, -1}}));
}

TEST(SkeletonFile, RandomHashTablesAreAsBySelection) {
    TestScene scene(kOneJoint);
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<std::uint32_t> hashes(1 + random() % 40);
        for (std::uint32_t& hash : hashes) switch (random() % 4) {
                case 0:
                    hash = random() % 8;
                    break;
                case 1:
                    hash = 0xFFFFFFFFu - random() % 4;
                    break;
                default:
                    hash = static_cast<std::uint32_t>(random());
            }
        const SkeletonData skeleton = MakeHashed(*scene.Joint("hips"), hashes);
        const SkeletonFileReader file(WriteBytes(skeleton, 0), false);
        ASSERT_EQ(file.hashes, NaiveHashTable(hashes));
    }
}

TEST(SkeletonFile, RemapTablesNameTheNearestSurvivingAncestor) {
    TestScene scene(R"(<scene><joint name="j0"><joint name="j1"><joint name="j2"><joint name="j3">
        <joint name="j4"><joint name="j5"><joint name="j6"><joint name="j8"/></joint></joint></joint>
        </joint><joint name="j7"/></joint></joint><joint name="j9"/></joint></scene>
        <objset name="skelLodSet1" type="set">
          <member path="||j0|j1|j2|j3|j4|j5" membership=""/>
          <member path="||j0|j1|j2|j3|j4|j5|j6" membership=""/>
          <member path="||j0|j1|j2|j7" membership=""/></objset>
        <objset name="skelLodSet2" type="set"><member path="||j0|j9" membership=""/>
          <member path="||j0|j1|j2|j3|j4|j5|j6|j8" membership=""/></objset>)");
    const auto skeleton = scene.Build({"j0"});
    const SkeletonFileReader file(WriteBytes(*skeleton, 0), false);
    EXPECT_EQ(file.lodCounts, (std::vector<std::uint16_t>{3, 2}));
    ASSERT_EQ(file.lodRemaps.size(), 2u);
    EXPECT_EQ(file.lodRemaps[0], (Remap{0, 1, 2, 3, 4, 4, 4, 2, 4, 0}));
    EXPECT_EQ(file.lodRemaps[1], (Remap{0, 1, 2, 3, 4, 5, 6, 7, 6, 0}));
}

TEST(SkeletonFile, SetUnderTwoRootsIsSubtractedTwice) {
    TestScene scene(R"(<scene><joint name="r"><joint name="r1"/></joint>
        <joint name="s"><joint name="s1"/></joint></scene>
        <objset name="skelLodSet1" type="set"><member path="||r|r1" membership=""/>
          <member path="||s|s1" membership=""/></objset>)");
    const SkeletonFileReader file(WriteBytes(*scene.Build({"r", "s"}), 1), true);
    EXPECT_EQ(file.lodCounts, (std::vector<std::uint16_t>{2, 2}));
    ASSERT_EQ(file.lodRemaps.size(), 2u);
    EXPECT_EQ(file.lodRemaps[0], (Remap{-1, -1, -1, -1}));
    EXPECT_EQ(file.lodRemaps[1], (Remap{0, 1, 0, 1}));
}

TEST(SkeletonFile, LimitBelowZeroLeavesNoJoint) {
    TestScene scene(R"(<scene><joint name="r"><joint name="a"/></joint></scene>
        <objset name="skelLodSet1" type="set"><member path="||r" membership=""/>
          <member path="||r|a" membership=""/><member path="||r|a" membership=""/></objset>)");
    const SkeletonFileReader file(WriteBytes(*scene.Build({"r"}), 0), false);
    EXPECT_EQ(file.lodCounts, std::vector<std::uint16_t>{3});
    EXPECT_EQ(file.lodRemaps[0], (Remap{-1, -1}));
}

TEST(SkeletonFile, CountsKeepTheirLow16Bits) {
    TestScene scene(kOneJoint);
    const auto skeleton = scene.Build({"hips"});
    skeleton->lodCounts = {0x10001};
    const SkeletonFileReader file(WriteBytes(*skeleton, 0), false);
    EXPECT_EQ(file.lodCounts, std::vector<std::uint16_t>{1});
    EXPECT_EQ(file.lodRemaps[0], Remap{-1}) << "the limit is made from the whole count";
}

TEST(SkeletonFile, RandomSkeletonsReadBackFromBothForms) {
    std::mt19937 random(11);
    for (int round = 0; round < 25; ++round) {
        const NaiveTree tree = MakeRandomTree(random, 1 + static_cast<int>(random() % 100), 5);
        TestScene scene(tree.Document());
        const auto skeleton = scene.Build({"j0"});
        const NaiveSkeleton expected = tree.Number();
        for (const bool bigEndian : {false, true}) {
            const std::string bytes = WriteBytes(*skeleton, bigEndian ? 1 : 0);
            const SkeletonFileReader file(bytes, bigEndian);
            EXPECT_EQ(file.end, bytes.size()) << "nothing stands behind the last table";
            EXPECT_EQ(file.signature, skeleton->signature);
            ASSERT_EQ(file.jointCount, expected.names.size());
            for (std::size_t i = 0; i < file.jointCount; ++i)
                EXPECT_EQ(file.joints[i], (SkeletonFileReader::Joint{1, expected.parents[i],
                                                                     expected.nextSiblings[i],
                                                                     expected.firstChildren[i]}));
            auto limit = static_cast<long long>(file.jointCount);
            for (std::size_t row = expected.lodCounts.size(); row-- > 0;) {
                limit -= expected.lodCounts[row];
                EXPECT_EQ(file.lodRemaps[row], NaiveRemap(expected.parents, limit));
            }
        }
    }
}

TEST(SkeletonFile, SkeletonWithoutJointsIsRefusedWithNothingAppended) {
    Biff::CBlock block;
    EXPECT_FALSE(WriteSkeleton(SkeletonData(), block, nullptr));
    EXPECT_TRUE(block.items.empty());
    EXPECT_EQ(block.alignment, 1u);
}

TEST(SkeletonFile, BlockStartsOnA16ByteBoundary) {
    TestScene scene(kOneJoint);
    Biff::CBlock block;
    EXPECT_TRUE(WriteSkeleton(*scene.Build({"hips"}), block, nullptr));
    EXPECT_EQ(block.alignment, 16u);
    EXPECT_EQ(block.tag, 0u);
}

TEST(SkeletonFile, HundredAndTwentyEightJointsPass) {
    TestScene scene(FlatSkeleton(128));
    const SkeletonFileReader file(WriteBytes(*scene.Build({"root"}), 0), false);
    EXPECT_EQ(file.jointCount, 128u);
}

TEST(SkeletonFile, HundredAndTwentyNineJointsAreRefusedForAnimationAlone) {
    TestScene scene(FlatSkeleton(129));
    const auto skeleton = scene.Build({"root"});
    Biff::CBlock block;
    EXPECT_EQ(FailureText([&] { WriteSkeleton(*skeleton, block, nullptr); }),
              "Can only handle 128 items in a skeleton used for animation. This skeleton has 129.");
    EXPECT_TRUE(block.items.empty());
    EXPECT_TRUE(WriteSkeleton(*skeleton, block, nullptr, 0));
    EXPECT_EQ(SkeletonFileReader(WriteBytes(block, 0), false).jointCount, 129u);
}
