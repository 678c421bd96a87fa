#include "VokLib/SceneTestTools.h"

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Objects/Animation/VokAnim.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokReference.h>

#include <set>
#include <vector>

#include "Support/CostRatio.h"

using namespace SceneTest;

class LinkStore : public SceneTest::Test {
  protected:
    std::size_t Resolve(bool retryDeferred = false) {
        unresolved.clear();
        return store.ResolveLinks(&world, &unresolved, retryDeferred);
    }

    VokObjLinkStore& store = VokObjLinkStore::Get();
    VokWorld world;
    VokNode* a = Add<VokNode>(world.GetHierarchy(), "a");
    std::set<std::string> unresolved;
};

TEST_F(LinkStore, LinkToALaterObjectResolves) {
    VokWorld read;
    Parse(read, Document("<anim name='m' target='||late'/><scene><node name='late'/></scene>"));
    const auto* anim = static_cast<const VokAnim*>(read.FindChild("m"));
    EXPECT_EQ(anim->target.GetTarget(), read.GetHierarchy()->FindChild("late"));
}

TEST_F(LinkStore, FailuresAreCountedAndListedWithTheirOwners) {
    const VokObjLinkHandle good(a, "||a");
    const VokObjLinkHandle bad(a, "||missing");
    const VokObjLinkHandle again(a, "||missing");
    const VokObjLinkHandle ownerless(nullptr, "|x|y");
    const VokObjLinkHandle empty(a, "");
    EXPECT_EQ(Resolve(), 3u);
    EXPECT_EQ(unresolved, (std::set<std::string>{"?->|x|y", "||a->||missing"}));
    EXPECT_EQ(good.GetTarget(), a);
    EXPECT_FALSE(bad.HasTarget());
    EXPECT_EQ(bad.GetPath().GetText(), "||missing");
    EXPECT_FALSE(empty.HasTarget());
}

TEST_F(LinkStore, FailedLinksAreNotTriedAgain) {
    const VokObjLinkHandle bad(a, "||b");
    EXPECT_EQ(Resolve(), 1u);
    Add<VokNode>(world.GetHierarchy(), "b");
    EXPECT_EQ(Resolve(true), 0u);
    EXPECT_FALSE(bad.HasTarget());
}

TEST_F(LinkStore, RecordsTellWhatBecameOfThem) {
    Add<VokReference>(&world, "r")->referenceNamespace = "ns";
    VokObjLink& found = store.AddUnresolved(nullptr, "||a", nullptr, nullptr);
    VokObjLink& failed = store.AddUnresolved(nullptr, "||b", nullptr, nullptr);
    VokObjLink& deferred = store.AddUnresolved(nullptr, "|ns:b", nullptr, nullptr);
    EXPECT_EQ(Resolve(), 1u);
    EXPECT_EQ(found.state, VokLinkState::Resolved);
    EXPECT_EQ(found.path, "");
    EXPECT_EQ(failed.state, VokLinkState::Failed);
    EXPECT_EQ(failed.path, "||b");
    EXPECT_EQ(deferred.state, VokLinkState::Deferred);
    EXPECT_EQ(deferred.path, "|ns:b");
    for (VokObjLink* link : {&found, &failed, &deferred}) store.Remove(link);
}

TEST_F(LinkStore, ListOfFailuresIsOptional) {
    const VokObjLinkHandle bad(a, "||b");
    EXPECT_EQ(store.ResolveLinks(&world, nullptr, false), 1u);
}

TEST_F(LinkStore, DeferredLinksAreTriedAgainWhereAsked) {
    VokReference* reference = Add<VokReference>(&world, "r");
    reference->referenceNamespace = "ns";
    const VokObjLinkHandle handle(a, "|ns:b");
    EXPECT_EQ(Resolve(), 0u);
    EXPECT_FALSE(handle.HasTarget());
    VokNode* target = Add<VokNode>(&world, "ns:b");
    EXPECT_EQ(Resolve(), 0u);
    EXPECT_FALSE(handle.HasTarget());
    EXPECT_EQ(Resolve(true), 0u);
    EXPECT_EQ(handle.GetTarget(), target);
}

TEST_F(LinkStore, WaitingRecordWithATargetIsAnError) {
    VokObjLink& link = store.AddUnresolved(nullptr, "||a", nullptr, nullptr);
    link.target = a;
    EXPECT_EQ(FailureOf([&] { Resolve(); }), Plain("Unresolved objlink already has target"));
    store.Remove(&link);
}

TEST_F(LinkStore, FailuresOfResolutionReachTheCaller) {
    const VokObjLinkHandle handle(a, "nobar");
    EXPECT_EQ(FailureOf([&] { Resolve(); }), Plain("Unrecognised path format: nobar"));
}

TEST_F(LinkStore, RemovedLinksLeaveTheirHandlesInvalid) {
    VokObjLinkHandle good(a, "||a");
    VokObjLinkHandle bad(a, "||x");
    VokObjLinkHandle worse(a, "||y");
    Resolve();
    store.RemoveUnresolved();
    EXPECT_TRUE(good.IsValid());
    EXPECT_FALSE(bad.IsValid());
    EXPECT_FALSE(worse.IsValid());
    EXPECT_EQ(store.GetCount(), 1u);
}

TEST_F(LinkStore, CallbackMayEndTheRecordsBehindItsOwn) {
    std::vector<VokObjLinkHandle> handles;
    VokObjLink* links[3];
    for (VokObjLink*& link : links)
        link = &store.AddUnresolved(
            nullptr, "||x",
            [](VokObjLinkStore& from, VokObjLink&, void* user) {
                for (int i = 0; i < 3; ++i) from.Remove(static_cast<VokObjLink**>(user)[i]);
            },
            links);
    const VokObjLinkHandle last(a, "||y");
    Resolve();
    store.RemoveUnresolved();
    EXPECT_EQ(store.GetCount(), 0u);
    EXPECT_FALSE(last.IsValid());
}

TEST_F(LinkStore, SwappedLinksPointAtTheNewTarget) {
    VokNode* b = Add<VokNode>(world.GetHierarchy(), "b");
    VokObjLinkHandle one(a), two(a), other(a);
    one.SetTarget(a);
    other.SetTarget(b);
    two.SetTarget(a);
    VokObjLinkHandle waiting(a, "||a");
    store.SwapLinkTargets(a, b);
    EXPECT_EQ(one.GetTarget(), b);
    EXPECT_EQ(two.GetTarget(), b);
    EXPECT_FALSE(waiting.HasTarget());
    world.GetHierarchy()->DeleteChild(b);
    EXPECT_FALSE(one.IsValid());
    EXPECT_FALSE(two.IsValid());
    EXPECT_FALSE(other.IsValid());
    EXPECT_TRUE(waiting.IsValid());
}

TEST_F(LinkStore, SwapRefusesATargetThatStillHasItsPath) {
    VokNode* b = Add<VokNode>(world.GetHierarchy(), "b");
    VokObjLink& link = store.AddResolved(nullptr, a, nullptr, nullptr);
    link.path = "||a";
    EXPECT_EQ(FailureOf([&] { store.SwapLinkTargets(a, b); }),
              Plain("Unexpected state in SwapLinkTargets()"));
    store.Remove(&link);
}

TEST_F(LinkStore, RemovingNothingIsIgnored) {
    store.Remove(nullptr);
    EXPECT_EQ(store.GetCount(), 0u);
}

TEST_F(LinkStore, ManyLinksIntoManySiblingsResolve) {
    constexpr int kCount = 100000;
    std::vector<VokNode*> targets;
    std::vector<VokObjLinkHandle> handles;
    handles.reserve(kCount);
    for (int i = 0; i < kCount; ++i) {
        targets.push_back(Add<VokNode>(world.GetHierarchy(), "n" + std::to_string(i)));
        handles.emplace_back(a, "||n" + std::to_string(kCount - 1 - i));
    }
    EXPECT_EQ(Resolve(), 0u);
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(handles[static_cast<std::size_t>(i)].GetTarget(),
                  targets[static_cast<std::size_t>(kCount - 1 - i)]);
}

TEST_F(LinkStore, OfManyChildrenOfOneNameTheFirstIsMeant) {
    VokNode* first = Add<VokNode>(world.GetHierarchy(), "same");
    for (int i = 0; i < 100; ++i) Add<VokNode>(world.GetHierarchy(), "same");
    std::vector<VokObjLinkHandle> handles;
    for (int i = 0; i < 20; ++i) handles.emplace_back(a, "||same");
    EXPECT_EQ(Resolve(), 0u);
    for (const VokObjLinkHandle& handle : handles) EXPECT_EQ(handle.GetTarget(), first);
}

TEST_F(LinkStore, ManyLinksThroughManyInstancesResolve) {
    constexpr int kCount = 20000;
    std::vector<VokNode*> targets;
    std::vector<VokObjLinkHandle> handles;
    handles.reserve(kCount + 1);
    for (int i = 0; i < kCount; ++i) {
        const std::string number = std::to_string(i);
        VokScene* scene = Add<VokScene>(&world, "s" + number);
        targets.push_back(Add<VokNode>(scene, "n" + number));
        Add<VokNode>(scene, "same");
        Add<VokInstance>(a, "i" + number)->target.SetTargetPath("|s" + number);
        handles.emplace_back(a, "||a|n" + std::to_string(kCount - 1 - i));
    }
    handles.emplace_back(a, "||a|same");
    EXPECT_EQ(Resolve(), 0u);
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(handles[static_cast<std::size_t>(i)].GetTarget(),
                  targets[static_cast<std::size_t>(kCount - 1 - i)]);
    EXPECT_EQ(handles.back().GetTarget(), world.FindChild("s0")->FindChild("same"));
}

TEST_F(LinkStore, LinksThroughInstancesTakeTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost = CostOfFourTimes(2000, [&](int count) {
        VokWorld instances;
        VokNode* holder = Add<VokNode>(instances.GetHierarchy(), "holder");
        std::vector<VokObjLinkHandle> handles;
        handles.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            Add<VokNode>(Add<VokScene>(&instances, "s" + number), "n" + number);
            Add<VokInstance>(holder, "i" + number)->target.SetTargetPath("|s" + number);
            handles.emplace_back(holder, "||holder|n" + std::to_string(count - 1 - i));
        }
        EXPECT_EQ(store.ResolveLinks(&instances, nullptr, false), 0u);
    });
    EXPECT_LT(cost, kMostOfFourTimes);
}

/// What links through instances cost when those all stand for one scene, in the innermost of
/// `depth` scenes of this name.
double CostOfInstancesOf(int (*depth)(int), std::string (*nameOfScenes)(int)) {
    return CostOfFourTimes(1000, [&](int count) {
        VokWorld instances;
        VokObj* scene = &instances;
        for (int i = 0; i < depth(count); ++i) scene = Add<VokScene>(scene, nameOfScenes(count));
        Add<VokNode>(scene, "x");
        std::vector<VokObjLinkHandle> handles;
        handles.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            VokNode* holder = Add<VokNode>(&instances, "p" + std::to_string(i));
            Add<VokInstance>(holder, "i")->target.SetTarget(scene);
            handles.emplace_back(holder, "|p" + std::to_string(i) + "|x");
        }
        EXPECT_EQ(VokObjLinkStore::Get().ResolveLinks(&instances, nullptr, false), 0u);
    });
}

TEST_F(LinkStore, InstancesOfADeepSceneTakeTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost =
        CostOfInstancesOf([](int count) { return count; }, [](int) { return std::string("s"); });
    EXPECT_LT(cost, kMostOfFourTimes);
}

TEST_F(LinkStore, InstancesOfASceneOfALongNameTakeTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost = CostOfInstancesOf(
        [](int) { return 1; },
        [](int count) { return std::string(static_cast<std::size_t>(count) * 100, 's'); });
    EXPECT_LT(cost, kMostOfFourTimes);
}

TEST_F(LinkStore, ALongNameBehindManyInstancesTakesTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost = CostOfFourTimes(2000, [](int count) {
        const std::string name(static_cast<std::size_t>(count) * 100, 'n');
        VokWorld instances;
        VokNode* holder = Add<VokNode>(&instances, "holder");
        Add<VokScene>(&instances, "s");
        Add<VokNode>(Add<VokScene>(&instances, "last"), name);
        for (int i = 0; i <= count; ++i)
            Add<VokInstance>(holder, "i")->target.SetTargetPath(i < count ? "|s" : "|last");
        const VokObjLinkHandle link(holder, "|holder|" + name);
        EXPECT_EQ(VokObjLinkStore::Get().ResolveLinks(&instances, nullptr, false), 0u);
    });
    EXPECT_LT(cost, kMostOfFourTimes);
}

/// Scenes of so many children that they are searched by the hashes of names.
TEST_F(LinkStore, ALongNameSoughtInManyWideScenesTakesTimeInProportionToTheirNumber) {
    if (!kHasProcessorTime) GTEST_SKIP() << "other processes would have a say";
    const double cost = CostOfFourTimes(500, [](int count) {
        const std::string name(static_cast<std::size_t>(count) * 500, 'n');
        VokWorld instances;
        std::vector<VokNode*> holders;
        for (const char* holder : {"a", "b"}) holders.push_back(Add<VokNode>(&instances, holder));
        for (int i = 0; i <= count; ++i) {
            VokScene* scene = Add<VokScene>(&instances, "s" + std::to_string(i));
            for (int k = 0; k < 20; ++k) Add<VokNode>(scene, "k");
            for (VokNode* holder : holders) Add<VokInstance>(holder, "i")->target.SetTarget(scene);
            if (i == count) Add<VokNode>(scene, name);
        }
        const VokObjLinkHandle first(holders[0], "|a|" + name);
        const VokObjLinkHandle second(holders[1], "|b|" + name);
        EXPECT_EQ(VokObjLinkStore::Get().ResolveLinks(&instances, nullptr, false), 0u);
    });
    EXPECT_LT(cost, kMostOfFourTimes);
}
