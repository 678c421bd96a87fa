#include "VoktRigbake/RigbakeTestTools.h"

#include <BiffLib/CBlock.h>
#include <HashClient/QelHashClientUtil.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <gtest/gtest.h>
#include <skeleton/skeleton.h>

#include <cctype>
#include <iostream>
#include <sstream>

TestServices::TestServices() {
    QelHashClientUtil::Initialise();
}

TestServices::~TestServices() {
    QelHashClientUtil::Shutdown();
}

void ParseDocument(VokWorld& world, std::string_view body, std::string_view rootAttributes) {
    const std::string document = Document(body, {.attributes = rootAttributes});
    VokParse parse;
    parse.ParseBuffer(world, document.data(), document.size(),
                      VokParse::kFirstBlock | VokParse::kLastBlock, nullptr);
}

TestScene::TestScene(std::string_view body, std::string_view rootAttributes)
    : world(std::make_unique<VokWorld>()) {
    ParseDocument(*world, body, rootAttributes);
}

VokJoint* TestScene::Joint(std::string_view name) {
    VokItHierarchy it(world.get(), VokItHierarchy::Kind::DepthFirst, VokJoint::TypeId());
    for (; !it.AtEnd(); it.Next())
        if (it.Current()->GetName() == name) return static_cast<VokJoint*>(it.Current());
    throw std::runtime_error("no joint named " + std::string(name));
}

std::vector<VokJoint*> TestScene::Joints(const std::vector<std::string>& names) {
    std::vector<VokJoint*> joints;
    for (const std::string& name : names) joints.push_back(Joint(name));
    return joints;
}

std::unique_ptr<SkeletonData> TestScene::Build(const std::vector<std::string>& roots, bool verbose,
                                               const VoktObjFilter* filter) {
    return BuildSkeleton(*world, Joints(roots), verbose, filter);
}

std::vector<std::string> NamesOf(const SkeletonData& skeleton) {
    std::vector<std::string> names;
    for (const auto& joint : skeleton.joints) names.push_back(joint->joint->GetName());
    return names;
}

std::string WriteBytes(Biff::CBlock& block, std::uint32_t endian, const std::string& fault) {
    std::ostringstream stream(std::ios::binary);
    block.Write(stream, endian);
    const std::string bytes = stream.str();
    if (bytes.starts_with("SK08")) {
        skeleton_fault found = {};
        skeleton_find_faults(bytes.data(), bytes.size(), &found, 1);
        EXPECT_EQ(found.text, fault);
    }
    return bytes;
}

std::string WriteBytes(const SkeletonData& skeleton, std::uint32_t endian,
                       const std::string& fault) {
    Biff::CBlock block;
    EXPECT_TRUE(WriteSkeleton(skeleton, block, nullptr));
    return WriteBytes(block, endian, fault);
}

std::string FromHex(std::string_view text) {
    std::string bytes;
    std::string digits;
    for (const char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c)) == 0) continue;
        digits += c;
        if (digits.size() < 2) continue;
        bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
        digits.clear();
    }
    return bytes;
}

std::string ToHex(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
        text += i % 16 == 15 ? '\n' : ' ';
    }
    return text;
}

std::string CaptureOutput(const std::function<void()>& work) {
    std::ostringstream captured;
    struct Restore {
        std::streambuf* buffer;
        ~Restore() { std::cout.rdbuf(buffer); }
    } restore{std::cout.rdbuf(captured.rdbuf())};
    work();
    return captured.str();
}
