#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/RigbakeTestTools.h"

#include <BiffLib/CBlock.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <gtest/gtest.h>

#include <random>

namespace {

using Names = std::vector<std::string>;

std::string Set(std::string_view name, const Names& members) {
    std::string text = "<objset name=\"" + std::string(name) + "\" type=\"set\">";
    for (const std::string& path : members)
        text += "<member path=\"" + path + "\" membership=\"\"/>";
    return text + "</objset>";
}

std::vector<int> Links(const SkeletonData& skeleton, std::int32_t SkeletonJoint::*link) {
    std::vector<int> links;
    for (const auto& joint : skeleton.joints) links.push_back((*joint).*link);
    return links;
}

constexpr const char* kTree = R"(<scene><joint name="root">
    <joint name="a"><joint name="a1"/><joint name="a2"/></joint>
    <joint name="b"><joint name="b1"/></joint>
    <joint name="c"/></joint></scene>)";

}  // namespace

TEST(BuildSkeleton, JointsAreTiedToParentsChildrenAndSiblings) {
    TestScene scene(kTree);
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::index), (std::vector{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::parent), (std::vector{-1, 0, 1, 1, 0, 4, 0}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::firstChild), (std::vector{1, 2, -1, -1, 5, -1, -1}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::nextSibling),
              (std::vector{-1, 4, 3, -1, 6, -1, -1}));
}

TEST(BuildSkeleton, NoRootsMakeNoSkeleton) {
    EXPECT_EQ(BuildSkeleton(VokWorld(), {}, false, nullptr), nullptr);
}

TEST(BuildSkeleton, NamesAreHashedInLowerCaseWithoutNamespaces) {
    TestScene scene(R"(<scene><joint name="a:b:Joint1"/></scene>)");
    const auto skeleton = scene.Build({"a:b:Joint1"});
    EXPECT_EQ(skeleton->joints[0]->nameHash, NaiveHash("joint1"));
}

TEST(BuildSkeleton, BytesFrom0x80UpKeepTheirCaseInTheHash) {
    TestScene scene("<scene><joint name=\"\xC4rm\"/></scene>");
    const auto skeleton = BuildSkeleton(scene.World(), scene.Joints({"\xC4rm"}), false, nullptr);
    EXPECT_EQ(skeleton->joints[0]->nameHash, NaiveHash("\xC4rm"));
}

TEST(BuildSkeleton, NamesThatDifferInCaseAloneAreDuplicates) {
    TestScene scene(R"(<scene><joint name="joint1"><joint name="JOINT1"/></joint></scene>)");
    EXPECT_EQ(FailureText([&] { scene.Build({"joint1"}); }),
              "ERROR: Duplicate joint name found in skeleton ('joint1')");
}

TEST(BuildSkeleton, OneNameInTwoNamespacesIsADuplicate) {
    TestScene scene(R"(<scene><joint name="a:Hip"><joint name="b:c:hIP"/></joint></scene>)");
    EXPECT_EQ(FailureText([&] { scene.Build({"a:Hip"}); }),
              "ERROR: Duplicate joint name found in skeleton ('hip')");
}

TEST(BuildSkeleton, NameOf260CharactersPassesAndOf261DoesNot) {
    const std::string longest(260, 'x');
    TestScene good("<scene><joint name=\"space:" + longest + "\"/></scene>");
    EXPECT_EQ(good.Build({"space:" + longest})->joints.size(), 1u);
}

TEST(BuildSkeleton, NameOf261CharactersIsRefused) {
    const std::string tooLong(261, 'x');
    TestScene scene("<scene><joint name=\"" + tooLong + "\"/></scene>");
    EXPECT_EQ(FailureText([&] { scene.Build({tooLong}); }),
              "ERROR: Can't handle joint names that are longer than 260 characters");
}

TEST(BuildSkeleton, LengthIsCheckedBeforeDuplicates) {
    const std::string tooLong(261, 'x');
    TestScene scene("<scene><joint name=\"r\"><joint name=\"" + tooLong +
                    "\"/><joint name=\"R\"/></joint></scene>");
    EXPECT_EQ(FailureText([&] { scene.Build({"r"}); }),
              "ERROR: Can't handle joint names that are longer than 260 characters");
}

TEST(BuildSkeleton, VerboseOutputShowsOrderThenList) {
    TestScene scene(R"(<scene><joint name="ns:Root"><joint name="ns:A"><joint name="ns:A1"/></joint>
                       <joint name="B"/></joint></scene>)" +
                    Set("skelLodSet2", {"||ns:Root|ns:A", "||ns:Root|ns:A|ns:A1"}));
    EXPECT_EQ(CaptureOutput([&] { scene.Build({"ns:Root"}, true); }),
              "0::: 0, ns:Root\n"
              "1::: 2, ns:A\n"
              "2::: 3, ns:A1\n"
              "3::: 1, B\n"
              "0:\tns:Root,\tdepth: 0, parent: -1, lodLevel: 0\n"
              "1:\tB,\tdepth: 1, parent: 0, lodLevel: 0\n"
              "2:\tns:A,\tdepth: 1, parent: 0, lodLevel: 2\n"
              "3:\tns:A1,\tdepth: 2, parent: 2, lodLevel: 2\n");
    EXPECT_EQ(CaptureOutput([&] { scene.Build({"ns:Root"}, false); }), "");
}

TEST(BuildSkeleton, VerboseOutputEndsWithTheJointThatIsRefused) {
    TestScene scene(R"(<scene><joint name="r"><joint name="a"><joint name="b"/></joint></joint>
                       </scene>)" +
                    Set("skelLodSet1", {"||r|a"}));
    EXPECT_EQ(CaptureOutput([&] { FailureText([&] { scene.Build({"r"}, true); }); }),
              "0::: 0, r\n"
              "1::: 2, a\n"
              "2::: 1, b\n"
              "0:\tr,\tdepth: 0, parent: -1, lodLevel: 0\n"
              "1:\tb,\tdepth: 2, parent: 2, lodLevel: 0\n");
}

TEST(BuildSkeleton, NothingIsPrintedWhenTheOrderFails) {
    TestScene scene(std::string(kTree) + Set("skelLodSet-5", {"||root|c"}));
    EXPECT_EQ(CaptureOutput([&] { FailureText([&] { scene.Build({"root"}, true); }); }), "");
}

TEST(BuildSkeleton, HundredThousandSiblingsEndWithTheLimitOfTheWriter) {
    std::string body = "<scene><joint name=\"root\">";
    for (int i = 0; i < 100000; ++i) body += "<joint name=\"j" + std::to_string(i) + "\"/>";
    TestScene scene(body + "</joint></scene>");
    const auto skeleton = scene.Build({"root"});
    Biff::CBlock block;
    EXPECT_EQ(FailureText([&] { WriteSkeleton(*skeleton, block, nullptr); }),
              "Can only handle 128 items in a skeleton used for animation. This skeleton has "
              "100001.");
    EXPECT_TRUE(block.items.empty());
}
