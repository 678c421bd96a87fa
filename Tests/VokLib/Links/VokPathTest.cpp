#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokReference.h>

using namespace SceneTest;

class Path : public SceneTest::Test {
  protected:
    VokObj* Find(const std::string& path) {
        reference = nullptr;
        return VokPath(path).Resolve(&world, &reference);
    }

    Failure Refusal(const std::string& path) {
        return FailureOf([&] { Find(path); });
    }

    VokReference* AddReference(VokObj* parent, const std::string& name, const std::string& space) {
        VokReference* added = Add<VokReference>(parent, name);
        added->referenceNamespace = space;
        return added;
    }

    VokInstance* AddInstance(VokObj* parent, const std::string& name, const std::string& target) {
        VokInstance* added = Add<VokInstance>(parent, name);
        added->target.SetTargetPath(target);
        return added;
    }

    VokWorld world;
    VokScene* hierarchy = world.GetHierarchy();
    VokNode* a = Add<VokNode>(hierarchy, "a");
    VokNode* b = Add<VokNode>(a, "b");
    VokReference* reference = nullptr;
};

TEST_F(Path, OfAnObjectListsTheNamesBelowTheWorld) {
    EXPECT_EQ(VokPath(b).GetText(), "||a|b");
    EXPECT_EQ(VokPath(hierarchy).GetText(), "|");
    EXPECT_EQ(VokPath(Add<VokScene>(&world, "s")).GetText(), "|s");
}

TEST_F(Path, CannotTellAnObjectOutsideAWorld) {
    VokNode loose;
    VokPath path("|kept");
    EXPECT_EQ(FailureOf([&] { path.SetFromObject(nullptr); }),
              Plain("Cannot set path to null obj"));
    EXPECT_EQ(FailureOf([&] { path.SetFromObject(&world); }),
              Plain("VokPath cannot currently represent the world"));
    EXPECT_EQ(FailureOf([&] { path.SetFromObject(&loose); }),
              Plain("VokPath must represent object under world"));
    EXPECT_EQ(path.GetText(), "|kept");
}

TEST_F(Path, EmptyPathIsNothingAndNoFailure) {
    EXPECT_EQ(Find(""), nullptr);
    EXPECT_EQ(reference, nullptr);
    EXPECT_TRUE(VokPath().IsEmpty());
}

TEST_F(Path, WithoutALeadingBarIsRefused) {
    EXPECT_EQ(Refusal("a|b"), Plain("Unrecognised path format: a|b"));
}

TEST_F(Path, OnlyTheFirstSegmentCanBeEmpty) {
    EXPECT_EQ(Find("|"), hierarchy);
    EXPECT_EQ(Find("||"), hierarchy);
    EXPECT_EQ(Find("||a|b"), b);
    EXPECT_EQ(Find("|||a||b"), b);
    EXPECT_EQ(Find("||a|b|"), b);
    EXPECT_EQ(Find("|a|b"), nullptr);
}

TEST_F(Path, LooksThroughInstancesIntoTheirScenes) {
    VokScene* scene = Add<VokScene>(&world, "s");
    VokNode* inner = Add<VokNode>(scene, "inner");
    VokNode* deep = Add<VokNode>(inner, "deep");
    AddInstance(a, "i", "|s");
    EXPECT_EQ(Find("||a|inner|deep"), deep);
    EXPECT_EQ(Find("||a|i"), nullptr);
    EXPECT_EQ(Find("||a|i|inner"), nullptr);
    EXPECT_EQ(Find("||a|b"), b);
}

TEST_F(Path, InstanceOfTheWantedNameHidesALaterChild) {
    Add<VokScene>(&world, "s");
    AddInstance(hierarchy, "x", "|s");
    Add<VokNode>(hierarchy, "x");
    EXPECT_EQ(Find("||x"), nullptr);
    Add<VokNode>(world.FindChild("s"), "x");
    EXPECT_EQ(Find("||x"), world.FindChild("s")->GetChild(0));
}

TEST_F(Path, EarlierInstancesComeFirst) {
    VokNode* one = Add<VokNode>(Add<VokScene>(&world, "s1"), "x");
    VokNode* two = Add<VokNode>(Add<VokScene>(&world, "s2"), "x");
    VokNode* only = Add<VokNode>(world.FindChild("s2"), "y");
    AddInstance(a, "i2", "|s2");
    AddInstance(a, "i1", "|s1");
    AddInstance(a, "i3", "|nowhere");
    EXPECT_EQ(Find("||a|x"), two);
    EXPECT_EQ(Find("||a|y"), only);
    EXPECT_NE(one, two);
    EXPECT_EQ(Refusal("||a|z"), Plain("Instance target scene not found"));
}

TEST_F(Path, InstanceInsideATargetSceneIsFoundByItsName) {
    VokScene* scene = Add<VokScene>(&world, "s");
    VokInstance* inner = AddInstance(scene, "i2", "|nowhere");
    VokNode* below = Add<VokNode>(inner, "below");
    AddInstance(a, "i", "|s");
    // The name is looked for in the scene alone; what it finds is not asked for its type.
    EXPECT_EQ(Find("||a|i2"), inner);
    EXPECT_EQ(Find("||a|i2|below"), below);
    EXPECT_EQ(Refusal("|s|i2"), Plain("Instance target scene not found"));
}

TEST_F(Path, InstanceMustStandForAScene) {
    AddInstance(a, "i", "||a|b");
    EXPECT_EQ(Refusal("||a|z"), Plain("Instance target scene not found"));
    Add<VokInstance>(b, "without");
    EXPECT_EQ(Refusal("||a|b|z"), Plain("Instance target scene not found"));
    AddInstance(Add<VokNode>(hierarchy, "c"), "i", "nobar");
    EXPECT_EQ(Refusal("||c|z"), Plain("Unrecognised path format: nobar"));
}

TEST_F(Path, InstanceThatLeadsIntoItselfEndsTheSearch) {
    AddInstance(hierarchy, "i", "||lost|s");
    EXPECT_EQ(Refusal("||x"), Plain("Instance target scene not found"));
}

TEST_F(Path, InstancesMayLeadThroughOneAnother) {
    // Scene s0 shows what "g" is in s1, which shows what "g" is in s2, and so on; the last one
    // shows the store, in which scenes named g stand in one another.
    constexpr int kChain = 20000;
    VokObj* nested = Add<VokScene>(&world, "store");
    for (int i = 0; i < kChain; ++i) nested = Add<VokScene>(nested, "g");
    for (int i = 0; i < kChain; ++i) {
        const std::string next = "|s" + std::to_string(i + 1) + "|g";
        AddInstance(Add<VokScene>(&world, "s" + std::to_string(i)), "i",
                    i + 1 < kChain ? next : std::string("|store"));
    }
    EXPECT_EQ(Find("|s0|g"), nested);
    EXPECT_EQ(Find("|s" + std::to_string(kChain - 1) + "|g"),
              world.FindChild("store")->GetChild(0));
    EXPECT_EQ(Find("|s0|x"), nullptr);
}

TEST_F(Path, ChildReferenceDefersByItsNamespace) {
    VokNode* outer = Add<VokNode>(hierarchy, "ns:top");
    VokReference* child = AddReference(outer, "ns:r", "y");
    EXPECT_EQ(Find("||ns:top|ns:y:z"), nullptr);
    EXPECT_EQ(reference, child);
    EXPECT_EQ(Find("||ns:top|ns:w:z"), nullptr);
    EXPECT_EQ(reference, nullptr);
    EXPECT_EQ(Find("||ns:top|ns:y"), nullptr);
    EXPECT_EQ(reference, nullptr);
}

TEST_F(Path, OfSeveralChildReferencesTheFirstIsMeant) {
    VokReference* first = AddReference(a, "r1", "y");
    AddReference(a, "r2", "y");
    EXPECT_EQ(Find("||a|y:z"), nullptr);
    EXPECT_EQ(reference, first);
}

TEST_F(Path, IntoTheHierarchyMeansThisDocument) {
    AddReference(b, "r", "ns");
    EXPECT_EQ(Find("||ns:x"), nullptr);
    EXPECT_EQ(reference, nullptr);
}

TEST_F(Path, LoneBarMeansTheHierarchyEvenWhereThereIsNone) {
    VokWorld other;
    delete other.RemoveChild(std::size_t{0});
    AddReference(&other, "r", "");
    EXPECT_EQ(VokPath("|").Resolve(&other, &reference), nullptr);
    EXPECT_EQ(reference, nullptr);
    EXPECT_EQ(VokPath("|x").Resolve(&other, &reference), nullptr);
    EXPECT_EQ(reference, nullptr);
}

TEST_F(Path, OutsideTheHierarchyAnyReferenceWillDo) {
    VokReference* first = AddReference(b, "r", "ns");
    AddReference(hierarchy, "r2", "ns");
    EXPECT_EQ(Find("|ns:x|y"), nullptr);
    EXPECT_EQ(reference, first);
    EXPECT_EQ(Find("|other:x"), nullptr);
    EXPECT_EQ(reference, nullptr);
}

TEST_F(Path, ReferencesOfReferencesCarryTheirOwnNamespaceInFront) {
    VokReference* nested = AddReference(b, "ns:r", "inner");
    VokReference* bare = AddReference(b, "plain", "x");
    // Behind the first colon the name is cut, so a nested reference is met only by a name without
    // a colon of its own.
    EXPECT_EQ(Find("|ns:inner:x"), nullptr);
    EXPECT_EQ(reference, nullptr);
    EXPECT_EQ(Find("|x"), nullptr);
    EXPECT_EQ(reference, bare);
    EXPECT_NE(nested, bare);
}

TEST_F(Path, NamespaceOfTheObjectReachedIsTakenOffTheSegment) {
    VokNode* outer = Add<VokNode>(&world, "one:two:top");
    VokReference* child = AddReference(outer, "r", "deep");
    EXPECT_EQ(Find("|one:two:top|one:two:deep:x"), nullptr);
    EXPECT_EQ(reference, child);
    // As many characters go as the namespace has, whatever they are.
    EXPECT_EQ(Find("|one:two:top|1234567deep:x"), nullptr);
    EXPECT_EQ(reference, child);
    EXPECT_EQ(Find("|one:two:top|short"), nullptr);
    EXPECT_EQ(reference, nullptr);
}

TEST_F(Path, NothingLeftOfTheSegmentMatchesAReferenceWithoutANamespace) {
    Add<VokNode>(&world, "name:top");
    VokReference* bare = AddReference(b, "r", "");
    EXPECT_EQ(Find("|name:top|x"), nullptr);
    EXPECT_EQ(reference, bare);
}

TEST_F(Path, ReferenceIsForgottenWhereThePathResolves) {
    reference = AddReference(b, "r", "ns");
    EXPECT_EQ(VokPath("||a").Resolve(&world, &reference), a);
    EXPECT_EQ(reference, nullptr);
    EXPECT_EQ(VokPath("|ns:x").Resolve(&world), nullptr);
}
