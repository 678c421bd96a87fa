#include "VokLib/SceneTestTools.h"

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Tree/VokNode.h>

using namespace SceneTest;

class LinkHandle : public SceneTest::Test {
  protected:
    VokObjLinkStore& store = VokObjLinkStore::Get();
    VokWorld world;
    VokNode* owner = Add<VokNode>(world.GetHierarchy(), "owner");
    VokNode* target = Add<VokNode>(world.GetHierarchy(), "target");
};

TEST_F(LinkHandle, FreshHandleHoldsNoLink) {
    const VokObjLinkHandle handle(owner);
    EXPECT_FALSE(handle.IsValid());
    EXPECT_FALSE(handle.HasTarget());
    EXPECT_EQ(handle.FindTarget(), nullptr);
    EXPECT_TRUE(handle.GetPath().IsEmpty());
    EXPECT_EQ(FailureOf([&] { handle.GetTarget(); }),
              Plain("VokObjLinkHandle has invalid iterator"));
    EXPECT_EQ(store.GetCount(), 0u);
}

TEST_F(LinkHandle, PathWaitsWithoutATarget) {
    const VokObjLinkHandle handle(owner, "||some|where");
    EXPECT_TRUE(handle.IsValid());
    EXPECT_FALSE(handle.HasTarget());
    EXPECT_EQ(handle.GetPath().GetText(), "||some|where");
    EXPECT_EQ(FailureOf([&] { handle.GetTarget(); }),
              Plain("VokObjLinkHandle has NULL target: ||some|where"));
    EXPECT_EQ(store.GetCount(), 1u);
}

TEST_F(LinkHandle, RenamedTargetShowsInThePath) {
    VokObjLinkHandle handle(owner);
    handle.SetTarget(target);
    EXPECT_EQ(handle.GetTarget(), target);
    EXPECT_EQ(handle.GetPath().GetText(), "||target");
    target->SetName("other");
    world.GetHierarchy()->RemoveChild(target);
    owner->AddChild(target);
    EXPECT_EQ(handle.GetPath().GetText(), "||owner|other");
}

TEST_F(LinkHandle, ResolvedLinkCanBeReplaced) {
    VokObjLinkHandle handle(owner);
    handle.SetTarget(target);
    handle.SetTarget(owner);
    EXPECT_EQ(handle.GetTarget(), owner);
    world.GetHierarchy()->DeleteChild(target);
    EXPECT_TRUE(handle.IsValid());
    handle.SetTargetPath("||x");
    EXPECT_EQ(handle.GetPath().GetText(), "||x");
    EXPECT_EQ(store.GetCount(), 1u);
}

TEST_F(LinkHandle, WaitingLinkCannotBeReplaced) {
    VokObjLinkHandle handle(owner, "||x");
    const Failure expected = Plain("objlink has valid iterator but no target");
    EXPECT_EQ(FailureOf([&] { handle.SetTarget(target); }), expected);
    EXPECT_EQ(FailureOf([&] { handle.SetTargetPath("||y"); }), expected);
    EXPECT_EQ(handle.GetPath().GetText(), "||x");
}

TEST_F(LinkHandle, CopyForAnotherOwnerHasTheSameTargetOrPath) {
    const VokObjLinkHandle invalid(owner);
    EXPECT_FALSE(VokObjLinkHandle(target, invalid).IsValid());

    const VokObjLinkHandle waiting(owner, "||x");
    EXPECT_EQ(VokObjLinkHandle(target, waiting).GetPath().GetText(), "||x");

    VokObjLinkHandle resolved(owner);
    resolved.SetTarget(target);
    const VokObjLinkHandle copy(target, resolved);
    EXPECT_EQ(copy.GetTarget(), target);
    EXPECT_EQ(store.GetCount(), 3u);
}

TEST_F(LinkHandle, DeletedTargetLeavesTheHandleInvalidAndTheStoreWithoutTheRecord) {
    VokObjLinkHandle handle(owner);
    handle.SetTarget(target);
    world.GetHierarchy()->DeleteChild(target);
    EXPECT_FALSE(handle.IsValid());
    EXPECT_TRUE(handle.GetPath().IsEmpty());
    EXPECT_EQ(FailureOf([&] { handle.GetTarget(); }),
              Plain("VokObjLinkHandle has invalid iterator"));
    EXPECT_EQ(store.GetCount(), 0u);
}

TEST_F(LinkHandle, DestroyedHandleTakesItsRecordAlong) {
    {
        VokObjLinkHandle handle(owner);
        handle.SetTarget(target);
        const VokObjLinkHandle waiting(owner, "||x");
        EXPECT_EQ(store.GetCount(), 2u);
    }
    EXPECT_EQ(store.GetCount(), 0u);
    world.GetHierarchy()->DeleteChild(target);
}

TEST_F(LinkHandle, MovedHandleKeepsItsLinkThroughTheTargetsDeath) {
    VokObjLinkHandle handle(owner);
    handle.SetTarget(target);
    VokObjLinkHandle moved(std::move(handle));
    VokObjLinkHandle assigned(owner, "||waiting");
    assigned = std::move(moved);
    EXPECT_EQ(assigned.GetTarget(), target);
    EXPECT_EQ(store.GetCount(), 1u);
    world.GetHierarchy()->DeleteChild(target);
    EXPECT_FALSE(assigned.IsValid());
    EXPECT_EQ(store.GetCount(), 0u);
}

TEST_F(LinkHandle, NoObjectMeansNoLink) {
    VokObjLinkHandle handle(owner);
    handle.SetTarget(target);
    handle.SetTarget(nullptr);
    EXPECT_FALSE(handle.IsValid());
    EXPECT_EQ(store.GetCount(), 0u);
}

TEST(LinkHandleAlone, NeedsTheStoreToHoldALink) {
    VokNode node;
    VokObjLinkHandle handle(&node);
    EXPECT_EQ(FailureOf([&] { handle.SetTarget(&node); }).text,
              "QelTools::Common::Singleton<class VokObjLinkStore>::Get: we don't have an instance");
}
