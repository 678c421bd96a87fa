#include "VokLib/SceneTestTools.h"

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokNode.h>

#include <cstdint>
#include <vector>

using namespace SceneTest;

namespace {

/// Tells in which order objects die.
class Mortal : public VokObj {
  public:
    explicit Mortal(std::string& diary) : deaths(diary) {}
    ~Mortal() override { deaths += GetName(); }
    std::string_view GetElementName() const override { return "mortal"; }

  private:
    std::string& deaths;
};

Mortal* AddMortal(VokObj* parent, const std::string& name, std::string& diary) {
    auto* mortal = new Mortal(diary);
    mortal->SetName(name);
    parent->AddChild(mortal);
    return mortal;
}

constexpr int kDeep = 10000;
constexpr int kWide = 100000;

}  // namespace

class ObjLifetime : public SceneTest::Test {};

TEST_F(ObjLifetime, ChildrenDieInOrder) {
    std::string diary;
    {
        Mortal top(diary);
        top.SetName("t");
        Mortal* a = AddMortal(&top, "a", diary);
        AddMortal(a, "1", diary);
        AddMortal(a, "2", diary);
        Mortal* b = AddMortal(&top, "b", diary);
        AddMortal(AddMortal(b, "3", diary), "4", diary);
        AddMortal(&top, "c", diary);
    }
    EXPECT_EQ(diary, "t12a43bc");
}

TEST_F(ObjLifetime, DeepTreeIsDestroyedWalkedAndWritten) {
    VokWorld world;
    VokObj* at = world.GetHierarchy();
    for (int i = 0; i < kDeep; ++i) at = Add<VokNode>(at, "n");
    int count = 0;
    std::size_t deepest = 0;
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        ++count;
        deepest = std::max(deepest, it.GetDepth());
    }
    EXPECT_EQ(count, kDeep + 2);
    EXPECT_EQ(deepest, static_cast<std::size_t>(kDeep + 1));
    EXPECT_EQ(VokPath(at).GetText().size(), 1u + 2u * kDeep);
    EXPECT_EQ(VokPath(at).Resolve(&world), at);

    const std::string text = Write(*world.GetHierarchy());
    std::string expected = "<scene>";
    for (int i = 0; i < kDeep; ++i) expected += "\n<node name=\"n\">";
    for (int i = 0; i < kDeep; ++i) expected += "\n</node>";
    EXPECT_EQ(text, expected + "\n</scene>");
}

TEST_F(ObjLifetime, WideTreeIsDestroyedAndWalked) {
    VokWorld world;
    for (int i = 0; i < kWide; ++i) Add<VokNode>(world.GetHierarchy(), "n");
    for (const auto kind : {VokItHierarchy::Kind::DepthFirst, VokItHierarchy::Kind::BreadthFirst}) {
        int count = 0;
        for (VokItHierarchy it(&world, kind, VokNode::TypeId()); !it.AtEnd(); it.Next()) ++count;
        EXPECT_EQ(count, kWide);
    }
}

TEST_F(ObjLifetime, ObjectsStandOnSixteenByteBoundaries) {
    std::vector<std::unique_ptr<VokObj>> objects;
    for (int i = 0; i < 1000; ++i) {
        if (i % 2 == 0)
            objects.push_back(std::make_unique<VokNode>());
        else
            objects.push_back(std::make_unique<VokAnim>());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(objects.back().get()) % 16, 0u);
    }
}

TEST_F(ObjLifetime, DyingTargetCutsItsLinks) {
    VokWorld world;
    VokNode* target = Add<VokNode>(world.GetHierarchy(), "target");
    VokAnim* first = Add<VokAnim>(&world, "first");
    VokAnim* second = Add<VokAnim>(target, "second");
    first->target.SetTarget(target);
    second->target.SetTarget(target);
    world.GetHierarchy()->DeleteChild(target);
    EXPECT_FALSE(first->target.IsValid());
    EXPECT_EQ(VokObjLinkStore::Get().GetCount(), 0u);
}

namespace {

std::string* removals = nullptr;

void NoteAndRemove(VokObjLinkStore& store, VokObjLink& link, void* user) {
    *removals += static_cast<const char*>(user);
    store.Remove(&link);
}

void NoteOnly(VokObjLinkStore&, VokObjLink&, void* user) {
    *removals += static_cast<const char*>(user);
}

}  // namespace

TEST_F(ObjLifetime, CallbacksComeInTheOrderInWhichTheLinksWereAdded) {
    std::string noted;
    removals = &noted;
    char one[] = "1", two[] = "2", three[] = "3";
    VokObjLinkStore& store = VokObjLinkStore::Get();
    auto target = std::make_unique<VokNode>();
    store.AddResolved(nullptr, target.get(), NoteAndRemove, one);
    VokObjLink& kept = store.AddResolved(nullptr, target.get(), NoteOnly, two);
    store.AddResolved(nullptr, target.get(), NoteAndRemove, three);
    target.reset();
    EXPECT_EQ(noted, "123");
    EXPECT_EQ(kept.target, nullptr);
    EXPECT_EQ(store.GetCount(), 1u);
    store.Remove(&kept);
}

TEST_F(ObjLifetime, RemovingALinkThatStandsElsewhereIsRefused) {
    VokWorld world;
    VokNode* a = Add<VokNode>(world.GetHierarchy(), "a");
    VokNode* b = Add<VokNode>(world.GetHierarchy(), "b");
    VokObjLinkStore& store = VokObjLinkStore::Get();
    VokObjLink& link = store.AddResolved(nullptr, a, nullptr, nullptr);
    EXPECT_EQ(FailureOf([&] { b->RemoveIncomingLink(store, link); }),
              OfObject("Could not find objlink to remove", "||b"));
    store.Remove(&link);
}
