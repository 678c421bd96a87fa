#include <VokLib/Library/VokLib.h>
#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Tree/VokScene.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>

#include <gtest/gtest.h>

#include <memory>

TEST(AtomVokWorld, TakesItsWorldAlongUnlessWorldsAreLeft) {
    const VokLib library(true, true, true, true, true);
    VokObjLinkHandle link(nullptr);
    for (const bool left : {false, true}) {
        auto atom = std::make_unique<VoktAtomVokWorld>();
        VokWorld& world = atom->world;
        link.SetTarget(world.GetHierarchy());
        VoktAtomVokWorld::LeaveWorlds(left);
        atom.reset();
        VoktAtomVokWorld::LeaveWorlds(false);
        EXPECT_EQ(link.IsValid(), left);
        if (left) delete &world;
    }
    EXPECT_FALSE(link.IsValid());
}
