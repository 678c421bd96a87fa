#include <QelTools/Exception.h>
#include <VokLib/Library/VokLib.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Stages/VoktMultipleWorldComponent.h>
#include <VoktFramework/Stages/VoktOneWorldComponent.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Support/ThrownText.h"

namespace {

class OneWorld : public VoktOneWorldComponent {
  public:
    using VoktOneWorldComponent::filter;
    using VoktOneWorldComponent::GetWorld;
    using VoktOneWorldComponent::VoktOneWorldComponent;
    void Process(VoktUniverse&) override {}
};

class EachWorld : public VoktMultipleWorldComponent {
  public:
    using VoktMultipleWorldComponent::DecorateAtomName;
    using VoktMultipleWorldComponent::filter;
    using VoktMultipleWorldComponent::GetCurrentWorld;
    using VoktMultipleWorldComponent::VoktMultipleWorldComponent;

    std::vector<VokWorld*> worlds;
    std::vector<std::string> names;

  protected:
    void ProcessWorld(VoktUniverse& universe) override {
        worlds.push_back(&GetCurrentWorld());
        names.push_back(DecorateAtomName("roots"));
        // What a stage adds while it runs is not a world of this pass.
        universe.Add(std::make_unique<VoktAtomVokWorld>(), currentWorldName);
    }
};

class NoObject : public VoktObjFilter {
  public:
    bool Accepts(const VokObj&) const override { return false; }
};

class WorldComponents : public testing::Test {
  protected:
    VokWorld* AddWorld(const std::string& name) {
        auto atom = std::make_unique<VoktAtomVokWorld>();
        VokWorld* world = &atom->world;
        universe.Add(std::move(atom), name);
        return world;
    }
    std::string Failure(const OneWorld& component) {
        return ThrownText<QelTools::Common::Exception>([&] { component.GetWorld(universe); });
    }

    VokLib library{true, true, true, true, true};
    VoktUniverse universe;
};

using OneWorldComponent = WorldComponents;

}  // namespace

TEST_F(OneWorldComponent, TheWorldNamedWorldIsChosenAmongOthers) {
    AddWorld("first");
    VokWorld* world = AddWorld("world");
    AddWorld("world");
    EXPECT_EQ(&OneWorld().GetWorld(universe), world);
}

TEST_F(OneWorldComponent, TheOnlyWorldIsChosenWhateverItsName) {
    universe.Add(std::make_unique<VoktAtomString>(), "world");
    VokWorld* world = AddWorld("other");
    EXPECT_EQ(&OneWorld().GetWorld(universe), world);
}

TEST_F(OneWorldComponent, SeveralOtherWorldsAreAFailure) {
    AddWorld("first");
    AddWorld("second");
    EXPECT_EQ(Failure(OneWorld()), "FetchByType() found non-unique object");
}

TEST_F(OneWorldComponent, NoWorldIsAFailure) {
    EXPECT_EQ(Failure(OneWorld()), "Couldn't find a world");
}

TEST_F(OneWorldComponent, ANameIsAskedForAlone) {
    AddWorld("world");
    VokWorld* named = AddWorld("named");
    OneWorld component;
    component.SetWorldName("named");
    EXPECT_EQ(&component.GetWorld(universe), named);
    component.SetWorldName("Named");
    EXPECT_EQ(Failure(component), "Couldn't find a world named: Named");
}

TEST_F(OneWorldComponent, TheFilterIsTheOneGiven) {
    const NoObject noObject;
    EXPECT_EQ(OneWorld().filter, nullptr);
    EXPECT_EQ(OneWorld(&noObject).filter, &noObject);
    EXPECT_EQ(EachWorld().filter, nullptr);
    EXPECT_EQ(EachWorld(&noObject).filter, &noObject);
}
