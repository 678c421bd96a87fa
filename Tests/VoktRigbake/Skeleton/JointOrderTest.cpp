#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/RigbakeTestTools.h"

#include <BiffLib/CBlock.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VoktFramework/Stages/VoktObjFilter.h>
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

class RefuseByName : public VoktObjFilter {
  public:
    explicit RefuseByName(std::string refusedName) : name(std::move(refusedName)) {}
    bool Accepts(const VokObj& object) const override { return object.GetName() != name; }

  private:
    std::string name;
};

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

TEST(JointOrder, WithoutSetsItIsPreOrder) {
    TestScene scene(kTree);
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "a", "a1", "a2", "b", "b1", "c"}));
    EXPECT_TRUE(skeleton->lodCounts.empty());
    EXPECT_EQ(skeleton->roots, scene.Joints({"root"}));
}

TEST(JointOrder, JointsAreTiedToParentsChildrenAndSiblings) {
    TestScene scene(kTree);
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::index), (std::vector{0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::parent), (std::vector{-1, 0, 1, 1, 0, 4, 0}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::firstChild), (std::vector{1, 2, -1, -1, 5, -1, -1}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::nextSibling),
              (std::vector{-1, 4, 3, -1, 6, -1, -1}));
}

TEST(JointOrder, FinerLevelsComeLastAndKeepTheOrderOfDiscovery) {
    TestScene scene(std::string(kTree) + Set("skelLodSet2", {"||root|a|a2", "||root|a|a1"}) +
                    Set("skelLodSet1", {"||root|b", "||root|b|b1"}));
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "a", "c", "b", "b1", "a1", "a2"}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::parent), (std::vector{-1, 0, 0, 0, 3, 1, 1}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::nextSibling), (std::vector{-1, 2, 3, -1, -1, 6, -1}))
        << "siblings are chained by ascending index";
}

TEST(JointOrder, ChildBelowItsParentsLevelIsRefused) {
    TestScene scene(std::string(kTree) + Set("skelLodSet1", {"||root|b"}));
    EXPECT_EQ(ThrownText([&] { scene.Build({"root"}); }),
              "Joint comes before parent joint in hierarchy");
}

TEST(JointOrder, ChildOnAHigherLevelThanItsParentPasses) {
    TestScene scene(std::string(kTree) + Set("skelLodSet1", {"||root|b"}) +
                    Set("skelLodSet7", {"||root|b|b1"}));
    EXPECT_EQ(NamesOf(*scene.Build({"root"})), (Names{"root", "a", "a1", "a2", "c", "b", "b1"}));
}

TEST(JointOrder, RootsFollowOneAnotherWithinALevel) {
    TestScene scene(R"(<scene><joint name="r"><joint name="r1"/><joint name="r2"/></joint>
                       <joint name="s"><joint name="s1"/><joint name="s2"/></joint></scene>)" +
                    Set("skelLodSet1", {"||s|s1", "||r|r1"}));
    const auto skeleton = scene.Build({"r", "s"});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"r", "r2", "s", "s2", "r1", "s1"}));
    EXPECT_EQ(skeleton->joints[0]->nextSibling, -1) << "roots are not chained to each other";
}

TEST(JointOrder, RootStaysOnLevelZeroWhateverSetHoldsIt) {
    TestScene scene(std::string(kTree) + Set("skelLodSet3", {"||root", "||root|c"}));
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(NamesOf(*skeleton).front(), "root");
    EXPECT_EQ(skeleton->lodCounts, std::vector<std::uint32_t>{2}) << "but it is counted";
}

TEST(JointOrder, NegativeLevelOfAJointIsRefused) {
    TestScene scene(std::string(kTree) + Set("skelLodSet-1", {"||root|c"}));
    EXPECT_EQ(ThrownText([&] { scene.Build({"root"}); }), "error defining joint order");
}

TEST(JointOrder, LevelFarBeyondTheJointsIsJustTheLast) {
    TestScene scene(std::string(kTree) + Set("skelLodSet2000000000", {"||root|a|a1"}));
    EXPECT_EQ(NamesOf(*scene.Build({"root"})), (Names{"root", "a", "a2", "b", "b1", "c", "a1"}));
}

TEST(JointOrder, PlainNodeBetweenJointsIsRefused) {
    TestScene scene(R"(<scene><joint name="root"><node name="n"><joint name="x"/></node>
                       </joint></scene>)");
    EXPECT_EQ(ThrownText([&] { scene.Build({"root"}); }),
              "Joint parented to non-joint {||root|n|x}");
}

TEST(JointOrder, PlainNodeWithoutJointsIsPassedOver) {
    TestScene scene(R"(<scene><node name="top"><joint name="root"><node name="n"/>
                       <joint name="x"/></joint></node></scene>)");
    const auto skeleton = scene.Build({"root"});
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "x"}));
    EXPECT_EQ(skeleton->joints[0]->parent, -1);
}

TEST(JointOrder, RefusedJointIsLeftOutAndItsChildrenHaveNoParent) {
    TestScene scene(kTree);
    const RefuseByName filter("a");
    const auto skeleton = scene.Build({"root"}, false, &filter);
    EXPECT_EQ(NamesOf(*skeleton), (Names{"root", "a1", "a2", "b", "b1", "c"}));
    EXPECT_EQ(Links(*skeleton, &SkeletonJoint::parent), (std::vector{-1, -1, -1, 0, 3, 0}));
}

TEST(JointOrder, NoRootsMakeNoSkeleton) {
    EXPECT_EQ(BuildSkeleton({}, false, nullptr), nullptr);
}

TEST(JointOrder, NamesAreHashedInLowerCaseWithoutNamespaces) {
    TestScene scene(R"(<scene><joint name="a:b:Joint1"/></scene>)");
    const auto skeleton = scene.Build({"a:b:Joint1"});
    EXPECT_EQ(skeleton->joints[0]->nameHash, NaiveHash("joint1"));
}

TEST(JointOrder, BytesFrom0x80UpKeepTheirCaseInTheHash) {
    TestScene scene("<scene><joint name=\"\xC4rm\"/></scene>");
    const auto skeleton = BuildSkeleton(scene.Joints({"\xC4rm"}), false, nullptr);
    EXPECT_EQ(skeleton->joints[0]->nameHash, NaiveHash("\xC4rm"));
}

TEST(JointOrder, NamesThatDifferInCaseAloneAreDuplicates) {
    TestScene scene(R"(<scene><joint name="joint1"><joint name="JOINT1"/></joint></scene>)");
    EXPECT_EQ(ThrownText([&] { scene.Build({"joint1"}); }),
              "ERROR: Duplicate joint name found in skeleton ('joint1')");
}

TEST(JointOrder, OneNameInTwoNamespacesIsADuplicate) {
    TestScene scene(R"(<scene><joint name="a:Hip"><joint name="b:c:hIP"/></joint></scene>)");
    EXPECT_EQ(ThrownText([&] { scene.Build({"a:Hip"}); }),
              "ERROR: Duplicate joint name found in skeleton ('hip')");
}

TEST(JointOrder, NameOf260CharactersPassesAndOf261DoesNot) {
    const std::string longest(260, 'x');
    TestScene good("<scene><joint name=\"space:" + longest + "\"/></scene>");
    EXPECT_EQ(good.Build({"space:" + longest})->joints.size(), 1u);
}

TEST(JointOrder, NameOf261CharactersIsRefused) {
    const std::string tooLong(261, 'x');
    TestScene scene("<scene><joint name=\"" + tooLong + "\"/></scene>");
    EXPECT_EQ(ThrownText([&] { scene.Build({tooLong}); }),
              "ERROR: Can't handle joint names that are longer than 260 characters");
}

TEST(JointOrder, LengthIsCheckedBeforeDuplicates) {
    const std::string tooLong(261, 'x');
    TestScene scene("<scene><joint name=\"r\"><joint name=\"" + tooLong +
                    "\"/><joint name=\"R\"/></joint></scene>");
    EXPECT_EQ(ThrownText([&] { scene.Build({"r"}); }),
              "ERROR: Can't handle joint names that are longer than 260 characters");
}

TEST(JointOrder, VerboseOutputShowsOrderThenList) {
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

TEST(JointOrder, VerboseOutputEndsWithTheJointThatIsRefused) {
    TestScene scene(R"(<scene><joint name="r"><joint name="a"><joint name="b"/></joint></joint>
                       </scene>)" +
                    Set("skelLodSet1", {"||r|a"}));
    EXPECT_EQ(CaptureOutput([&] { ThrownText([&] { scene.Build({"r"}, true); }); }),
              "0::: 0, r\n"
              "1::: 2, a\n"
              "2::: 1, b\n"
              "0:\tr,\tdepth: 0, parent: -1, lodLevel: 0\n"
              "1:\tb,\tdepth: 2, parent: 2, lodLevel: 0\n");
}

TEST(JointOrder, NothingIsPrintedWhenTheOrderFails) {
    TestScene scene(std::string(kTree) + Set("skelLodSet-5", {"||root|c"}));
    EXPECT_EQ(CaptureOutput([&] { ThrownText([&] { scene.Build({"root"}, true); }); }), "");
}

TEST(JointOrder, HundredThousandSiblingsEndWithTheLimitOfTheWriter) {
    std::string body = "<scene><joint name=\"root\">";
    for (int i = 0; i < 100000; ++i) body += "<joint name=\"j" + std::to_string(i) + "\"/>";
    TestScene scene(body + "</joint></scene>");
    const auto skeleton = scene.Build({"root"});
    Biff::CBlock block;
    EXPECT_EQ(ThrownText([&] { WriteSkeleton(*skeleton, block, nullptr); }),
              "Can only handle 128 items in a skeleton used for animation. This skeleton has "
              "100001.");
    EXPECT_TRUE(block.items.empty());
}

TEST(JointOrder, RandomTreesAreNumberedAsByCountingDown) {
    std::mt19937 random(20260101);
    for (int round = 0; round < 30; ++round) {
        const NaiveTree tree = MakeRandomTree(random, 1 + round * 2, 4);
        TestScene scene(tree.Document());
        const auto skeleton = scene.Build({"j0"});
        const NaiveSkeleton expected = tree.Number();
        EXPECT_EQ(NamesOf(*skeleton), expected.names);
        EXPECT_EQ(Links(*skeleton, &SkeletonJoint::parent), expected.parents);
        EXPECT_EQ(Links(*skeleton, &SkeletonJoint::nextSibling), expected.nextSiblings);
        EXPECT_EQ(Links(*skeleton, &SkeletonJoint::firstChild), expected.firstChildren);
        EXPECT_EQ(skeleton->lodCounts, expected.lodCounts);
    }
}
