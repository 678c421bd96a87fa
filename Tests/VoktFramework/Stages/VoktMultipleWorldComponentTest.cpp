#include <QelTools/Exception.h>
#include <VokLib/Library/VokLib.h>
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

using MultipleWorldComponent = WorldComponents;

}  // namespace

TEST_F(MultipleWorldComponent, OnlyWorldsNamedWorldAreTakenAtFirst) {
    AddWorld("other");
    VokWorld* first = AddWorld("world");
    VokWorld* second = AddWorld("world");
    EachWorld component;
    component.Process(universe);
    EXPECT_EQ(component.worlds, (std::vector<VokWorld*>{first, second}));
    EXPECT_EQ(component.names, (std::vector<std::string>{"roots", "roots"}));
    EXPECT_EQ(&component.GetCurrentWorld(), second);
}

TEST_F(MultipleWorldComponent, AnEmptyNameTakesEveryWorldInOrder) {
    VokWorld* first = AddWorld("b");
    VokWorld* second = AddWorld("world");
    VokWorld* third = AddWorld("");
    EachWorld component;
    component.SetWorldName("");
    component.Process(universe);
    EXPECT_EQ(component.worlds, (std::vector<VokWorld*>{first, second, third}));
    EXPECT_EQ(component.names, (std::vector<std::string>{"roots_b", "roots", "roots_"}));
}

TEST_F(MultipleWorldComponent, WithoutAMatchingWorldNothingIsDone) {
    AddWorld("other");
    EachWorld component;
    component.Process(universe);
    EXPECT_TRUE(component.worlds.empty());
    EXPECT_EQ(ThrownText<QelTools::Common::Exception>([&] { component.GetCurrentWorld(); }),
              "Internal error - please report as a bug");
}
