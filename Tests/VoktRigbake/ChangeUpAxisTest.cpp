#include "RigbakeTestTools.h"

#include <VokLib/VokException.h>
#include <VokLib/VokScene.h>
#include <VoktFramework/VoktAtomVokWorld.h>
#include <VoktFramework/VoktCommandLineSyntax.h>
#include <VoktFramework/VoktUniverse.h>
#include <VoktRigbake/VoktChangeUpAxis.h>
#include <gtest/gtest.h>

namespace {

class ChangeUpAxis : public testing::Test {
  protected:
    ChangeUpAxis() {
        auto atom = std::make_unique<VoktAtomVokWorld>();
        world = &atom->world;
        ParseDocument(*world, R"(<scene><joint name="a"/></scene>)", R"(upaxis="z")");
        universe.Add(std::move(atom), "world");
    }
    ~ChangeUpAxis() noexcept override = default;

    void Run(const std::string& axis) {
        stage.SetFlag("-changeUpAxis", axis);
        stage.Validate();
        stage.Process(universe);
    }

    TestServices services;
    VoktUniverse universe;
    VokWorld* world = nullptr;
    VoktChangeUpAxis stage;
};

}  // namespace

TEST_F(ChangeUpAxis, UnknownAxisIsRefusedByTheText) {
    for (const std::string axis : {"Y", "Keep", "x", "z ", "0"}) {
        stage.SetFlag("-changeUpAxis", axis);
        EXPECT_EQ(ThrownText([this] { stage.Validate(); }),
                  "Unrecognised up axis form '" + axis + "'\n");
    }
}

TEST_F(ChangeUpAxis, KeepAndNoFlagLeaveTheWorldAlone) {
    stage.Validate();
    stage.Process(universe);
    Run("keep");
    Run("");
    EXPECT_EQ(world->GetUpAxis(), 1);
    EXPECT_EQ(world->GetHierarchy()->GetChild(0)->GetName(), "a");
}

TEST_F(ChangeUpAxis, WorldThatStandsRightIsLeftAlone) {
    Run("z");
    EXPECT_EQ(world->GetUpAxis(), 1);
    EXPECT_EQ(world->GetHierarchy()->GetChild(0)->GetName(), "a");
}

TEST_F(ChangeUpAxis, WorldThatWouldHaveToTurnIsRefused) {
    EXPECT_EQ(ThrownText([this] { Run("y"); }),
              "Changing the up axis of a scene is not supported by this build yet.");
}

TEST_F(ChangeUpAxis, FlagsAreReadByTheirShortNames) {
    VoktCommandLineSyntax syntax;
    stage.AddFlags(syntax);
    const char* words[] = {"tool", "-cuaa", "true", "-cua", "w"};
    syntax.Parse(5, words, 1);
    stage.ReadFlags(syntax);
    EXPECT_EQ(ThrownText([this] { stage.Validate(); }), "Unrecognised up axis form 'w'\n");
}
