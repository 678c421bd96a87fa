#include "VokLib/SceneTestTools.h"

#include <VokLib/Links/VokPath.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokObj.h>

using namespace SceneTest;

class ObjTree : public SceneTest::Test {
  protected:
    std::string Names() const {
        std::string names;
        for (std::size_t i = 0; i < top->GetChildCount(); ++i)
            names += top->GetChild(i)->GetName() + " ";
        return names;
    }

    VokWorld world;
    VokNode* top = Add<VokNode>(world.GetHierarchy(), "top");
    VokNode* a = Add<VokNode>(top, "a");
    VokNode* b = Add<VokNode>(top, "b");
    VokNode* c = Add<VokNode>(top, "c");
    std::unique_ptr<VokNode> loose = std::make_unique<VokNode>();
};

TEST_F(ObjTree, ChildrenStandInTheOrderOfAdding) {
    EXPECT_EQ(Names(), "a b c ");
    EXPECT_EQ(a->GetParent(), top);
    EXPECT_EQ(loose->GetParent(), nullptr);
}

TEST_F(ObjTree, InsertAtTheCountAppends) {
    loose->SetName("d");
    top->InsertChild(loose.release(), 3);
    EXPECT_EQ(Names(), "a b c d ");
}

TEST_F(ObjTree, InsertInTheMiddleMovesTheOthersUp) {
    loose->SetName("d");
    top->InsertChild(loose.release(), 1);
    EXPECT_EQ(Names(), "a d b c ");
}

TEST_F(ObjTree, InsertPastTheCountIsRefusedAndChangesNothing) {
    EXPECT_EQ(FailureOf([&] { top->InsertChild(loose.get(), 4); }),
              OfObject("Index for new child out of range", "||top"));
    EXPECT_EQ(Names(), "a b c ");
    EXPECT_EQ(loose->GetParent(), nullptr);
}

TEST_F(ObjTree, InsertBeforeASiblingStandsInFrontOfIt) {
    loose->SetName("d");
    top->InsertChildBefore(loose.release(), b);
    EXPECT_EQ(Names(), "a d b c ");
}

TEST_F(ObjTree, InsertBeforeAStrangerAppends) {
    loose->SetName("d");
    top->InsertChildBefore(loose.release(), world.GetHierarchy());
    EXPECT_EQ(Names(), "a b c d ");
}

TEST_F(ObjTree, NullChildIsRefused) {
    const Failure expected = OfObject("Cannot add NULL child", "||top");
    EXPECT_EQ(FailureOf([&] { top->AddChild(nullptr); }), expected);
    EXPECT_EQ(FailureOf([&] { top->InsertChild(nullptr, 0); }), expected);
    EXPECT_EQ(Names(), "a b c ");
}

TEST_F(ObjTree, ChildOfAnotherIsRefused) {
    const Failure expected = OfObject("Child-to-be already parented", "||top|a");
    EXPECT_EQ(FailureOf([&] { a->AddChild(b); }), expected);
    EXPECT_EQ(FailureOf([&] { a->InsertChild(b, 0); }), expected);
    EXPECT_EQ(Names(), "a b c ");
    EXPECT_EQ(a->GetChildCount(), 0u);
}

TEST_F(ObjTree, RemoveByIndexHandsTheChildOver) {
    const std::unique_ptr<VokObj> removed(top->RemoveChild(std::size_t{1}));
    EXPECT_EQ(removed.get(), b);
    EXPECT_EQ(b->GetParent(), nullptr);
    EXPECT_EQ(Names(), "a c ");
}

TEST_F(ObjTree, RemovePastTheEndIsRefused) {
    EXPECT_EQ(FailureOf([&] { top->RemoveChild(std::size_t{3}); }),
              OfObject("Child index out of range", "||top"));
    EXPECT_EQ(Names(), "a b c ");
}

TEST_F(ObjTree, RemovingAStrangerReturnsNullAndDeletesNothing) {
    EXPECT_EQ(top->RemoveChild(loose.get()), nullptr);
    top->DeleteChild(loose.get());
    loose->SetName("alive");
    EXPECT_EQ(loose->GetName(), "alive");
    EXPECT_EQ(Names(), "a b c ");
}

TEST_F(ObjTree, DeleteChildTakesItOut) {
    top->DeleteChild(b);
    EXPECT_EQ(Names(), "a c ");
}

TEST_F(ObjTree, AdoptedChildrenKeepTheirOrderBehindTheOwnOnes) {
    Add<VokNode>(loose.get(), "x");
    Add<VokNode>(loose.get(), "y");
    top->AdoptChildren(*loose);
    EXPECT_EQ(Names(), "a b c x y ");
    EXPECT_EQ(top->GetChild(3)->GetParent(), top);
    EXPECT_EQ(loose->GetChildCount(), 0u);
}

TEST_F(ObjTree, FindChildGivesTheFirstOfThatExactName) {
    Add<VokJoint>(top, "b");
    EXPECT_EQ(top->FindChild("b"), b);
    EXPECT_EQ(top->FindChild("B"), nullptr);
    EXPECT_EQ(top->FindChild(""), nullptr);
}

TEST_F(ObjTree, AnObjectIsItsOwnDescendant) {
    EXPECT_TRUE(a->IsDescendantOf(a));
    EXPECT_TRUE(a->IsDescendantOf(&world));
    EXPECT_FALSE(top->IsDescendantOf(a));
    EXPECT_FALSE(a->IsDescendantOf(b));
}

TEST_F(ObjTree, WorldStandsAtTheTop) {
    EXPECT_EQ(a->GetWorld(), &world);
    EXPECT_EQ(world.GetWorld(), &world);
    EXPECT_EQ(FailureOf([&] { loose->GetWorld(); }),
              OfObject("GetWorld() did not find an VokWorld"));
    EXPECT_EQ(FailureOf([] { VokObj::GetWorld(nullptr); }), OfObject("this is NULL"));
}

TEST_F(ObjTree, NameWithABarIsAcceptedWhileTheCheckIsOff) {
    a->SetName("x|y");
    EXPECT_EQ(a->GetName(), "x|y");
    EXPECT_EQ(VokPath(a).GetText(), "||top|x|y");
    EXPECT_EQ(VokPath(a).Resolve(&world), nullptr);
}

TEST_F(ObjTree, NameWithABarIsRefusedWhileTheCheckIsOn) {
    VokObj::SetNameCheck(true);
    const Failure thrown = FailureOf([&] { a->SetName("x|y"); });
    VokObj::SetNameCheck(false);
    EXPECT_EQ(thrown, OfObject("The string \"x|y\" is not a valid name for an VokObj.", "||top|a"));
    EXPECT_EQ(a->GetName(), "a");
}

TEST_F(ObjTree, BaseNameStandsBehindTheLastColon) {
    a->SetName("one:two:three");
    EXPECT_EQ(a->GetBaseName(), "three");
    a->SetName("plain");
    EXPECT_EQ(a->GetBaseName(), "plain");
    a->SetName("empty:");
    EXPECT_EQ(a->GetBaseName(), "");
}

TEST_F(ObjTree, CastFollowsTheChainOfBases) {
    VokJoint* joint = Add<VokJoint>(top, "joint");
    EXPECT_EQ(vok_cast<VokNode>(joint), joint);
    EXPECT_EQ(vok_cast<VokJoint>(static_cast<VokObj*>(nullptr)), nullptr);
    EXPECT_EQ(FailureOf([&] { vok_cast<VokJoint>(a); }), OfObject("vok_cast failed", "||top|a"));
    EXPECT_EQ(ExactCast<VokNode>(static_cast<VokObj*>(joint)), nullptr);
    EXPECT_TRUE(world.IsA(MakeTypeId("QEL")));
    EXPECT_FALSE(world.IsA(VokNode::TypeId()));
}
