#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokNode.h>

using namespace SceneTest;
using Kind = VokItHierarchy::Kind;

/// r holds a(d(g), e), b, c(f); d and c are joints.
class ItHierarchy : public SceneTest::Test {
  protected:
    ItHierarchy() {
        top->SetName("r");
        VokNode* a = Add<VokNode>(top.get(), "a");
        VokJoint* d = Add<VokJoint>(a, "d");
        Add<VokNode>(d, "g");
        Add<VokNode>(a, "e");
        Add<VokNode>(top.get(), "b");
        Add<VokNode>(Add<VokJoint>(top.get(), "c"), "f");
    }

    std::string Walk(Kind kind, VokTypeId filter = 0, std::string_view skipAt = "") const {
        std::string names;
        for (VokItHierarchy it(top.get(), kind, filter); !it.AtEnd(); it.Next()) {
            names += it.Current()->GetName();
            if (it.Current()->GetName() == skipAt) it.SkipChildren();
        }
        return names;
    }

    std::unique_ptr<VokNode> top = std::make_unique<VokNode>();
};

TEST_F(ItHierarchy, DepthFirstIsPreOrder) {
    EXPECT_EQ(Walk(Kind::DepthFirst), "radgebcf");
}

TEST_F(ItHierarchy, BreadthFirstGoesLevelByLevel) {
    EXPECT_EQ(Walk(Kind::BreadthFirst), "rabcdefg");
}

TEST_F(ItHierarchy, FilterPresentsTheExactTypeAlone) {
    EXPECT_EQ(Walk(Kind::DepthFirst, VokJoint::TypeId()), "dc");
    EXPECT_EQ(Walk(Kind::BreadthFirst, VokJoint::TypeId()), "cd");
    EXPECT_EQ(Walk(Kind::DepthFirst, VokNode::TypeId()), "ragebf");
}

TEST_F(ItHierarchy, AbsentTypeIsAtTheEndFromTheStart) {
    for (const Kind kind : {Kind::DepthFirst, Kind::BreadthFirst}) {
        VokItHierarchy it(top.get(), kind, VokScene::TypeId());
        EXPECT_TRUE(it.AtEnd());
        EXPECT_EQ(it.Current(), nullptr);
        EXPECT_EQ(it.Next(), nullptr);
    }
}

TEST_F(ItHierarchy, SkippedChildrenAreLeftOut) {
    EXPECT_EQ(Walk(Kind::DepthFirst, 0, "a"), "rabcf");
    EXPECT_EQ(Walk(Kind::BreadthFirst, 0, "a"), "rabcf");
    EXPECT_EQ(Walk(Kind::DepthFirst, 0, "r"), "r");
}

TEST_F(ItHierarchy, SkipOnALastChildGoesToTheNextSiblingOfAnAncestor) {
    Add<VokNode>(top->GetChild(0)->FindChild("e"), "x");
    EXPECT_EQ(Walk(Kind::DepthFirst, 0, "e"), "radgebcf");
    EXPECT_EQ(Walk(Kind::DepthFirst, 0, "c"), "radgexbc");
}

TEST_F(ItHierarchy, SkipHoldsForOneStep) {
    VokItHierarchy it(top.get());
    it.Next();
    it.SkipChildren();
    EXPECT_EQ(it.Next()->GetName(), "b");
    EXPECT_EQ(it.Next()->GetName(), "c");
    EXPECT_EQ(it.Next()->GetName(), "f");
}

TEST_F(ItHierarchy, SingleObjectIsCurrentThenTheEnd) {
    VokNode single;
    for (const Kind kind : {Kind::DepthFirst, Kind::BreadthFirst}) {
        VokItHierarchy it(&single, kind);
        EXPECT_EQ(it.Current(), &single);
        EXPECT_FALSE(it.AtEnd());
        EXPECT_EQ(it.Next(), nullptr);
        EXPECT_TRUE(it.AtEnd());
        EXPECT_EQ(it.Next(), nullptr);
    }
}

TEST_F(ItHierarchy, NullRootIsAtTheEnd) {
    EXPECT_TRUE(VokItHierarchy(nullptr).AtEnd());
    EXPECT_TRUE(VokItHierarchy(nullptr, Kind::BreadthFirst, VokNode::TypeId()).AtEnd());
}

TEST_F(ItHierarchy, BreadthFirstCountsLevels) {
    std::string levels;
    for (VokItHierarchy it(top.get(), Kind::BreadthFirst); !it.AtEnd(); it.Next())
        levels += std::to_string(it.GetLevel());
    EXPECT_EQ(levels, "01112223");
}

TEST_F(ItHierarchy, LevelsGoOnWhereChildrenAreSkipped) {
    VokItHierarchy it(top.get(), Kind::BreadthFirst);
    it.Next();
    it.SkipChildren();  // a
    it.Next();
    it.Next();
    EXPECT_EQ(it.Next()->GetName(), "f");
    EXPECT_EQ(it.GetLevel(), 2);
    EXPECT_EQ(it.Next(), nullptr);
}

TEST_F(ItHierarchy, ResetStartsAnew) {
    VokItHierarchy it(top.get(), Kind::BreadthFirst);
    it.Next();
    it.SkipChildren();
    it.Reset(top->GetChild(0), Kind::DepthFirst, VokJoint::TypeId());
    EXPECT_EQ(it.Current()->GetName(), "d");
    EXPECT_EQ(it.Next(), nullptr);
    it.Reset(top.get());
    EXPECT_EQ(it.Next()->GetName(), "a");
    EXPECT_EQ(it.Next()->GetName(), "d");
}

TEST_F(ItHierarchy, WalkGoesOnBehindAnObjectWhoseElderSiblingWasTakenOut) {
    VokItHierarchy it(top.get());
    while (it.Current()->GetName() != "b") it.Next();
    top->DeleteChild(top->FindChild("a"));
    EXPECT_EQ(it.Next()->GetName(), "c");
    EXPECT_EQ(it.Next()->GetName(), "f");
    EXPECT_EQ(it.Next(), nullptr);
}
