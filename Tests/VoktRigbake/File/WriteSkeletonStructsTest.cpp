#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/RigbakeTestTools.h"
#include "VoktRigbake/SkeletonFileReader.h"

#include <BiffLib/CBlock.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <cstring>
#include <fstream>
#include <sstream>

namespace {

std::string ReadDocument(const std::string& name) {
    std::ifstream stream(std::string(RIGBAKE_SOURCE_ROOT) + "/" + name, std::ios::binary);
    EXPECT_TRUE(stream) << name;
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> FindCodeBlocks(const std::string& document) {
    static const std::string kBegin = "```c\n";
    std::vector<std::string> blocks;
    for (std::size_t at = document.find(kBegin); at != std::string::npos;
         at = document.find(kBegin, at)) {
        at += kBegin.size();
        const std::size_t end = document.find("```", at);
        blocks.push_back(document.substr(at, end - at));
        at = end;
    }
    return blocks;
}

constexpr const char* kScene = R"(<scene><joint name="ns:Root">
    <joint name="Finger"><translate>1 2 3</translate><joint name="Tip"/></joint>
    <joint name="Arm"><scaleCompensate>false</scaleCompensate></joint></joint></scene>
    <objset name="skelLodSet1" type="set"><member path="||ns:Root|Finger" membership=""/></objset>
    <objset name="skelLodSet2" type="set"><member path="||ns:Root|Finger|Tip" membership=""/></objset>)";

/// A file in memory as an engine holds it.
class SkeletonFileStructs : public testing::Test {
  protected:
    SkeletonFileStructs() {
        TestScene scene(kScene);
        bytes = WriteBytes(*scene.Build({"ns:Root"}),
                           kBigEndianHere ? Biff::kBigEndian : Biff::kLittleEndian);
        image.resize(bytes.size() / sizeof(Line) + 1);
        std::memcpy(image.data(), bytes.data(), bytes.size());
        header = reinterpret_cast<const skeleton_header*>(image.data());
    }

    template <class T>
    const T* Follow(const skeleton_offset& offset) const {
        return static_cast<const T*>(skeleton_follow(&offset));
    }

    struct alignas(16) Line {
        char bytes[16];
    };
    std::string bytes;
    std::vector<Line> image;
    const skeleton_header* header = nullptr;
};

}  // namespace

TEST(SkeletonFileDocument, ShowsTheHeadersAsTheyAre) {
    std::string format = ReadDocument("Runtime/skeleton/skeleton_format.h");
    const std::string functions = ReadDocument("Runtime/skeleton/skeleton_read.h");
    const std::vector<std::string> blocks = FindCodeBlocks(ReadDocument("docs/skeleton-file.md"));
    EXPECT_GE(blocks.size(), 8u);
    for (const std::string& block : blocks) {
        const std::size_t at = format.find(block);
        if (at != std::string::npos)
            format.erase(at, block.size());
        else
            EXPECT_NE(functions.find(block), std::string::npos) << block;
    }
    EXPECT_EQ(format.find("typedef"), std::string::npos) << "not in the document: " << format;
}

TEST_F(SkeletonFileStructs, HeaderReadsInPlace) {
    EXPECT_EQ(std::string(header->magic, 4), "SK08");
    EXPECT_EQ(header->joint_count, 4);
    EXPECT_EQ(header->joints, 36) << "the mark of the right byte order";
    EXPECT_EQ(header->signature, SkeletonFileReader(bytes, kBigEndianHere).signature);
    EXPECT_EQ(skeleton_follow(&header->procedural), nullptr);
    EXPECT_EQ(skeleton_follow(&header->procedural_end), nullptr);
}

TEST_F(SkeletonFileStructs, JointsAndTransformsReadInPlace) {
    const auto* joints = Follow<skeleton_joint>(header->joints);  // Root, Arm, Finger, Tip
    EXPECT_EQ(joints[0].parent, SKELETON_NO_JOINT);
    EXPECT_EQ(joints[0].first_child, 1);
    EXPECT_EQ(joints[0].flags, SKELETON_JOINT_SCALE_COMPENSATE);
    EXPECT_EQ(joints[1].next_sibling, 2);
    EXPECT_EQ(joints[1].flags, 0);
    EXPECT_EQ(joints[3].parent, 2);
    const auto* transforms = Follow<skeleton_transform>(header->transforms);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(transforms) % 16, 0u);
    EXPECT_EQ(transforms[2].translation[1], 2.0f);
    EXPECT_EQ(transforms[2].rotation[3], 1.0f);
    EXPECT_EQ(transforms[2].scale[2], 1.0f);
}

TEST_F(SkeletonFileStructs, JointsAreFoundByName) {
    EXPECT_EQ(skeleton_find_joint(header, NaiveHash("root")), 0);
    EXPECT_EQ(skeleton_find_joint(header, NaiveHash("arm")), 1);
    EXPECT_EQ(skeleton_find_joint(header, NaiveHash("finger")), 2);
    EXPECT_EQ(skeleton_find_joint(header, NaiveHash("tip")), 3);
    EXPECT_EQ(skeleton_find_joint(header, NaiveHash("toe")), -1);
    EXPECT_EQ(skeleton_find_joint(header, 0), -1);
    EXPECT_EQ(skeleton_find_joint(header, 0xFFFFFFFFu), -1);
}

TEST_F(SkeletonFileStructs, LevelsOfDetailReadInPlace) {
    EXPECT_EQ(Follow<skeleton_lods>(header->lods)->count, 2u);
    const std::uint16_t* coarse = skeleton_lod_remap(header, 0);
    EXPECT_EQ(std::vector<int>(coarse, coarse + 4), (std::vector{0, 1, 0, 0}));
    const std::uint16_t* fine = skeleton_lod_remap(header, 1);
    EXPECT_EQ(std::vector<int>(fine, fine + 4), (std::vector{0, 1, 2, 2}));
}

TEST_F(SkeletonFileStructs, NumbersOfTheDocumentAreTrue) {
    const std::string document = ReadDocument("docs/skeleton-file.md");
    TestScene scene(R"(<scene><joint name="hips"/></scene>)");
    EXPECT_EQ(scene.Build({"hips"})->signature, 0xE93AA345u);
    EXPECT_EQ(NaiveHash("hips"), 0x811C56D0u);
    EXPECT_NE(document.find("0xE93AA345"), std::string::npos);
    EXPECT_NE(document.find("0x811C56D0"), std::string::npos);
}
