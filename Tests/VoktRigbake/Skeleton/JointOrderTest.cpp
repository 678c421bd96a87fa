#include "VoktRigbake/NaiveSkeleton.h"
#include "VoktRigbake/RigbakeTestTools.h"

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
    EXPECT_EQ(FailureText([&] { scene.Build({"root"}); }),
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
    EXPECT_EQ(FailureText([&] { scene.Build({"root"}); }), "error defining joint order");
}

TEST(JointOrder, LevelFarBeyondTheJointsIsJustTheLast) {
    TestScene scene(std::string(kTree) + Set("skelLodSet2000000000", {"||root|a|a1"}));
    EXPECT_EQ(NamesOf(*scene.Build({"root"})), (Names{"root", "a", "a2", "b", "b1", "c", "a1"}));
}

TEST(JointOrder, PlainNodeBetweenJointsIsRefused) {
    TestScene scene(R"(<scene><joint name="root"><node name="n"><joint name="x"/></node>
                       </joint></scene>)");
    EXPECT_EQ(FailureText([&] { scene.Build({"root"}); }),
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
