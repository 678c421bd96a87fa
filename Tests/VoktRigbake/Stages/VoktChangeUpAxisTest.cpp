#include "VoktRigbake/RigbakeTestTools.h"

#include <VokLib/Base/VokException.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokScene.h>
#include <VoktFramework/Atoms/VoktAtomJointList.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktRigbake/Stages/VoktChangeUpAxis.h>
#include <VoktRigbake/Stages/VoktFindRootJoints.h>
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
        EXPECT_EQ(FailureText([this] { stage.Validate(); }),
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

TEST_F(ChangeUpAxis, EveryWorldTurnsThatStandsOtherwise) {
    auto atom = std::make_unique<VoktAtomVokWorld>();
    VokWorld& second = atom->world;
    ParseDocument(second, R"(<scene><joint name="b"/></scene>)", R"(upaxis="y")");
    universe.Add(std::move(atom), "second");
    Run("y");
    EXPECT_EQ(world->GetUpAxis(), 0);
    EXPECT_EQ(world->GetHierarchy()->GetChild(0)->GetName(), "__VokChangeUpAxis__magic_node");
    EXPECT_EQ(second.GetHierarchy()->GetChild(0)->GetName(), "b");
    Run("z");
    EXPECT_EQ(world->GetUpAxis(), 1);
    EXPECT_EQ(second.GetUpAxis(), 1);
    EXPECT_EQ(second.GetHierarchy()->GetChild(0)->GetName(), "__VokChangeUpAxis__magic_node");
}

TEST_F(ChangeUpAxis, JointsTurnWithAnimationOnly) {
    auto* joint = dynamic_cast<VokJoint*>(world->GetHierarchy()->GetChild(0));
    joint->translate = {1, 2, 3, 0};
    Run("y");
    EXPECT_EQ(joint->translate, (VokVector4{1, 2, 3, 0}));
    stage.SetFlag("-changeUpAxisAnimation", "true");
    Run("z");
    EXPECT_FLOAT_EQ(joint->translate.y, -3);
    EXPECT_FLOAT_EQ(joint->translate.z, 2);
}

TEST_F(ChangeUpAxis, RootsThatWereFoundBeforeStayTheRoots) {
    ParseDocument(*world, R"(<scene><joint name="b"/></scene>)", R"(upaxis="z")");
    VoktErrorHandler errors;
    VoktFindRootJoints finder(nullptr);
    finder.SetFlag("-multiRoot", "");
    finder.Process(universe);
    Run("y");
    const auto& roots = universe.FetchByTypeAndName<VoktAtomJointList>("roots")->joints;
    ASSERT_EQ(roots.size(), 2u);
    for (const VokJoint* root : roots)
        EXPECT_EQ(root->GetParent()->GetName(), "__VokChangeUpAxis__magic_node");
    EXPECT_EQ(roots[0]->GetParent(), roots[1]->GetParent());
}

TEST_F(ChangeUpAxis, FlagsAreReadByTheirShortNames) {
    VoktCommandLineSyntax syntax;
    stage.AddFlags(syntax);
    const char* words[] = {"tool", "-cuaa", "true", "-cua", "w"};
    syntax.Parse(5, words, 1);
    stage.ReadFlags(syntax);
    EXPECT_EQ(FailureText([this] { stage.Validate(); }), "Unrecognised up axis form 'w'\n");
}
