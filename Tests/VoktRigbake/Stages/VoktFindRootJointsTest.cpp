#include "VoktRigbake/RigbakeTestTools.h"

#include <QelTools/Exception.h>
#include <VokLib/Base/VokException.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokScene.h>
#include <VoktFramework/Atoms/VoktAtomJointList.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktFramework/Stages/VoktObjFilter.h>
#include <VoktRigbake/Stages/VoktFindRootJoints.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr const char* kParentsText =
    "Skeletal roots must either all be unparented or share a parent";

class RefuseByName : public VoktObjFilter {
  public:
    explicit RefuseByName(std::string refusedName) : name(std::move(refusedName)) {}
    bool Accepts(const VokObj& object) const override { return object.GetName() != name; }

  private:
    std::string name;
};

/// A run of the stage on one world named "world".
class RootJoints : public testing::Test {
  protected:
    ~RootJoints() noexcept override = default;

    void Run(std::string_view body, bool multiRoot, const VoktObjFilter* filter = nullptr) {
        VoktFindRootJoints stage(filter);
        if (multiRoot) stage.SetFlag("-multiRoot", "");
        AddWorld(body, "world");
        stage.Process(universe);
    }

    VokWorld& AddWorld(std::string_view body, const std::string& name) {
        auto atom = std::make_unique<VoktAtomVokWorld>();
        VokWorld& world = atom->world;
        ParseDocument(world, body);
        universe.Add(std::move(atom), name);
        return world;
    }

    /// The names of the roots in the atom; "(no atom)" without one.
    std::vector<std::string> Roots(const std::string& name = "roots") const {
        const auto* atom = universe.FetchByTypeAndName<VoktAtomJointList>(name);
        if (atom == nullptr) return {"(no atom)"};
        std::vector<std::string> names;
        for (const VokJoint* joint : atom->joints) names.push_back(joint->GetName());
        return names;
    }

    std::string Report() const {
        std::ostringstream stream;
        errors.Print(stream);
        return stream.str();
    }

    using Names = std::vector<std::string>;
    TestServices services;
    VoktErrorHandler errors;
    VoktUniverse universe;
};

}  // namespace

TEST_F(RootJoints, WorldWithoutJointsLeavesAnEmptyList) {
    Run(R"(<scene><node name="n"/></scene>)", false);
    EXPECT_EQ(Roots(), Names{});
    EXPECT_EQ(Report(), "");
}

TEST_F(RootJoints, OnlyTheFirstOfTwoIsKeptWithAWarning) {
    Run(R"(<scene><node name="n"><joint name="a"/><joint name="b"/></node></scene>)", false);
    EXPECT_EQ(Roots(), Names{"a"});
    EXPECT_EQ(Report(),
              "Warning: 10100 Multiple skeletons found. Only the first one will be exported "
              "without -multiRoot option.\n");
    EXPECT_EQ(errors.CountErrors(), 0u);
}

TEST_F(RootJoints, BothOfTwoUnderOneNodeAreKeptWithMultiRoot) {
    Run(R"(<scene><node name="n"><joint name="a"/><joint name="b"/></node></scene>)", true);
    EXPECT_EQ(Roots(), (Names{"a", "b"}));
    EXPECT_EQ(Report(), "");
}

TEST_F(RootJoints, JointBeneathANodeBeneathAJointIsHidden) {
    Run(R"(<scene><joint name="a"><node name="n"><joint name="b"/></node></joint></scene>)", true);
    EXPECT_EQ(Roots(), Names{"a"});
}

TEST_F(RootJoints, WalkIsPreOrderAndGoesThroughNodes) {
    Run(R"(<scene><node name="n"><node name="m"><joint name="deep"><joint name="x"/></joint></node></node>
           <joint name="flat"/></scene>)",
        false);
    EXPECT_EQ(Roots(), Names{"deep"});
}

TEST_F(RootJoints, DifferentParentsAreRefusedWithMultiRoot) {
    EXPECT_EQ(FailureText([this] {
                  Run(R"(<scene><joint name="a"/><joint name="b"/>
                         <node name="n"><joint name="c"/></node></scene>)",
                      true);
              }),
              kParentsText);
    EXPECT_EQ(Roots(), (Names{"a", "b", "c"})) << "the atom stands before the work begins";
}

TEST_F(RootJoints, ParentsOfOneParentAreStillDifferent) {
    EXPECT_EQ(FailureText([this] {
                  Run(R"(<scene><node name="n"><joint name="a"/></node>
                         <node name="m"><joint name="b"/></node></scene>)",
                      true);
              }),
              kParentsText);
}

TEST_F(RootJoints, DifferentParentsAreAWarningWithoutMultiRoot) {
    Run(R"(<scene><node name="n"><joint name="c"/></node><joint name="a"/></scene>)", false);
    EXPECT_EQ(Roots(), Names{"c"});
    ASSERT_EQ(errors.GetRecords().size(), 1u);
    EXPECT_EQ(errors.GetRecords()[0].error.GetId(), 10100);
}

TEST_F(RootJoints, RootsDirectlyUnderTheHierarchyShareIt) {
    Run(R"(<scene><joint name="a"/><node name="n"/><joint name="b"/></scene>)", true);
    EXPECT_EQ(Roots(), (Names{"a", "b"}));
}

TEST_F(RootJoints, OneRootGivesNoWarning) {
    Run(R"(<scene><joint name="a"><joint name="b"/><joint name="c"/></joint></scene>)", false);
    EXPECT_EQ(Roots(), Names{"a"});
    EXPECT_EQ(Report(), "");
}

TEST_F(RootJoints, JointsOutsideTheHierarchyAreNone) {
    Run(R"(<scene name="other"><joint name="x"/></scene><joint name="y"/>
           <scene><joint name="a"/></scene>)",
        true);
    EXPECT_EQ(Roots(), Names{"a"});
}

TEST_F(RootJoints, RefusedJointHidesTheJointsBeneathIt) {
    const RefuseByName filter("a");
    Run(R"(<scene><joint name="a"><joint name="b"/></joint><joint name="c"/></scene>)", true,
        &filter);
    EXPECT_EQ(Roots(), Names{"c"});
}

TEST_F(RootJoints, WorldWithoutHierarchyIsRefused) {
    VokWorld& world = AddWorld("<scene/>", "world");
    world.DeleteChild(world.GetHierarchy());
    VoktFindRootJoints stage(nullptr);
    EXPECT_EQ(FailureText([&] { stage.Process(universe); }), "No hierarchy present.");
    EXPECT_EQ(Roots(), Names{}) << "the atom stands before the work begins";
}

TEST_F(RootJoints, EachWorldHasAListOfItsOwn) {
    AddWorld(R"(<scene><joint name="a"/></scene>)", "world");
    AddWorld(R"(<scene><joint name="b"/></scene>)", "second");
    VoktFindRootJoints stage(nullptr);
    stage.SetWorldName("");
    stage.Process(universe);
    EXPECT_EQ(Roots("roots"), Names{"a"});
    EXPECT_EQ(Roots("roots_second"), Names{"b"});
}

TEST_F(RootJoints, UnknownArgumentIsRefused) {
    VoktFindRootJoints stage(nullptr);
    EXPECT_EQ(FailureText([&] { stage.SetFlag("-mr", ""); }), "Unhandled argument: -mr");
}

TEST_F(RootJoints, FlagIsReadByItsShortName) {
    VoktFindRootJoints stage(nullptr);
    VoktCommandLineSyntax syntax;
    stage.AddFlags(syntax);
    const char* words[] = {"tool", "-mr"};
    syntax.Parse(2, words, 1);
    stage.ReadFlags(syntax);
    AddWorld(R"(<scene><joint name="a"/><joint name="b"/></scene>)", "world");
    stage.Process(universe);
    EXPECT_EQ(Roots(), (Names{"a", "b"}));
}

TEST_F(RootJoints, WarningTextIsRegisteredOnce) {
    VoktFindRootJoints first(nullptr);
    VoktFindRootJoints second(nullptr);
    EXPECT_EQ(FailureText([this] { errors.Register(10100, "another text"); }),
              "Duplicate VoktError id registered");
}
