#include "VokLib/SceneTestTools.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Document/VokParse.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokNode.h>

#include <deque>

using namespace SceneTest;

/// What stands inside an element that is not the object's own, and what of the object's own is
/// still known there.
class ForeignElements : public SceneTest::Test {
  protected:
    /// Reads `element` into the hierarchy and returns the object that it makes.
    VokNode* ReadNode(const std::string& element) {
        Parse(world, Document("<scene>" + element + "</scene>"));
        return static_cast<VokNode*>(world.GetHierarchy()->GetChild(0));
    }

    Failure Refusal(const std::string& element) {
        VokWorld refused;
        return FailureOf([&] { Parse(refused, Document("<scene>" + element + "</scene>")); });
    }

    static std::string Translation(const VokNode& node) {
        return std::to_string(static_cast<int>(node.translate.x)) +
               std::to_string(static_cast<int>(node.translate.y)) +
               std::to_string(static_cast<int>(node.translate.z));
    }

    VokWorld world;
};

TEST_F(ForeignElements, DoNotKnowTheObjectsOwnElements) {
    EXPECT_EQ(Refusal("<node name='n'><customData><translate>1 2 3</translate></customData>"
                      "</node>"),
              OfObject("Unknown tag \"translate\"", "||n"));
    EXPECT_EQ(Refusal("<joint name='j'><customData><freedoms channels='X'/></customData></joint>"),
              OfObject("Unknown tag \"freedoms\"", "||j"));
}

TEST_F(ForeignElements, OfATypeAreThoseOfItsBaseToo) {
    // A translate is the node's, so that the joint's own elements are unknown inside it.
    EXPECT_EQ(Refusal("<joint name='j'><translate>1 2 3<freedoms channels='X'/></translate>"
                      "</joint>"),
              OfObject("Unknown tag \"freedoms\"", "||j"));
    EXPECT_EQ(Refusal("<joint name='j'><translate>1 2 3<mystery/></translate></joint>"),
              OfObject("Unknown tag \"mystery\"", "||j"));
}

TEST_F(ForeignElements, OwnElementInsideAnotherTakesItsPlace) {
    EXPECT_EQ(Translation(*ReadNode("<joint name='j'><translate>1 2 3<translate>4 5 6</translate>"
                                    "7 8 9</translate></joint>")),
              "456");
}

TEST_F(ForeignElements, ObjectInsideAnElementLeavesItOpen) {
    const VokNode* node =
        ReadNode("<node name='n'><translate>1 2 3<node name='k'/>7 8 9</translate></node>");
    EXPECT_EQ(Translation(*node), "789");
    EXPECT_EQ(node->GetChildCount(), 1u);
}

TEST_F(ForeignElements, InsideAnAttributeArePassedByWithTheirContents) {
    const VokNode* node = ReadNode(
        "<node name='n'><customData><attribute name='a' type='int' value='3'><mystery><inner>4"
        "</inner></mystery></attribute></customData><translate>1 2 3</translate></node>");
    EXPECT_EQ(node->GetCustomData().GetCount(), 1u);
    EXPECT_EQ(Translation(*node), "123");
}

TEST_F(ForeignElements, AttributeNeedsNoCustomDataAroundIt) {
    const VokNode* node = ReadNode(
        "<node name='n'><attribute name='a' type='int' value='3'/>"
        "<translate>1 2 3</translate></node>");
    EXPECT_EQ(node->GetCustomData().GetCount(), 1u);
    EXPECT_EQ(Translation(*node), "123");
}

TEST_F(ForeignElements, CustomDataOfOneObjectIsNoOtherObjects) {
    EXPECT_EQ(Refusal("<node name='n'><customData><attribute name='a' type='int'>"
                      "<node name='k'><value>1</value></node></attribute></customData></node>"),
              OfObject("Unknown tag \"value\"", "||n|k"));
}

/// An object whose start needs no attributes, so that it can be held without a document.
class Holder : public VokNode {
  public:
    void ParseAttributes(VokParse&) override {}
    /// Whether it may hold a further object; none at the limit of objects that hold one another.
    bool MayHold() {
        Holder held;
        VokParse parse;
        return FailureOf([&] { ParseHeldObject(parse, held); }).text == "";
    }
};

class HeldObjects : public SceneTest::Test {
  protected:
    HeldObjects() {
        for (int i = 0; i < VokLimits::kMaxHeldDepth; ++i) {
            VokParse parse;
            chain[static_cast<std::size_t>(i)].ParseHeldObject(
                parse, chain[static_cast<std::size_t>(i) + 1]);
        }
    }

    std::deque<Holder> chain = std::deque<Holder>(VokLimits::kMaxHeldDepth + 1);
    Holder& deepest = chain.back();
    Holder* child = new Holder;
};

TEST_F(HeldObjects, AreLimitedInDepth) {
    EXPECT_TRUE(chain[VokLimits::kMaxHeldDepth - 1].MayHold());
    EXPECT_FALSE(deepest.MayHold());
    EXPECT_TRUE(child->MayHold());
    delete child;
}

TEST_F(HeldObjects, AddedChildrenStandAsDeepAsTheirParent) {
    deepest.AddChild(child);
    EXPECT_FALSE(child->MayHold());
}

TEST_F(HeldObjects, InsertedChildrenStandAsDeepAsTheirParent) {
    deepest.InsertChild(child, 0);
    EXPECT_FALSE(child->MayHold());
    auto* before = new Holder;
    deepest.InsertChildBefore(before, child);
    EXPECT_FALSE(before->MayHold());
}

TEST_F(HeldObjects, AdoptedChildrenStandAsDeepAsTheirNewParent) {
    Holder other;
    other.AddChild(child);
    deepest.AdoptChildren(other);
    EXPECT_FALSE(child->MayHold());
    other.AdoptChildren(deepest);
    EXPECT_TRUE(child->MayHold());
}
