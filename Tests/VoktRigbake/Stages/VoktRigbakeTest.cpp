#include "VoktRigbake/RigbakeTestTools.h"
#include "VoktRigbake/SkeletonFileReader.h"

#include <VokLib/Base/VokException.h>
#include <VoktFramework/Atoms/VoktAtomBiff.h>
#include <VoktFramework/Atoms/VoktAtomJointList.h>
#include <VoktFramework/Atoms/VoktAtomVokWorld.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <VoktRigbake/Stages/VoktFindRootJoints.h>
#include <VoktRigbake/Stages/VoktRigbake.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr const char* kJoint = R"(<scene><joint name="hips"/></scene>)";

constexpr const char* kDrivenJoint = R"(<scene><joint name="hips"><joint name="tail"/></joint>
    </scene><anim name="keys" target="||hips|tail"><animChannel name="tx" channel="translateX"
    inputObject="||hips" inputChannel="rotateX"><animData interp="QELHermite" numKeys="2">
    <keyValues>0 1</keyValues><keyTimes>0 1</keyTimes><tangents>1 1</tangents></animData>
    </animChannel></anim>)";

constexpr const char* kConstrainedJoint = R"(<scene><joint name="hips"><joint name="tail"/></joint>
    </scene><translationConstraint name="c" constrain="||hips|tail"><target name="||hips"
    weight="1"/></translationConstraint>)";

std::string FlatSkeleton(int jointCount) {
    std::string body = "<scene><joint name=\"root\">";
    for (int i = 1; i < jointCount; ++i) body += "<joint name=\"j" + std::to_string(i) + "\"/>";
    return body + "</joint></scene>";
}

class RigbakeComponent : public testing::Test {
  protected:
    ~RigbakeComponent() noexcept override = default;

    void AddWorld(std::string_view body) {
        auto atom = std::make_unique<VoktAtomVokWorld>();
        ParseDocument(atom->world, body);
        universe.Add(std::move(atom), "world");
    }

    void AddWorldAndRoots(std::string_view body) {
        AddWorld(body);
        VoktFindRootJoints(nullptr).Process(universe);
    }

    /// The report lines after the stage failed with a VoktError.
    std::string ReportOf(VoktRigbake& failing) {
        try {
            failing.Process(universe);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const VoktError& error) {
            errors.Add(error);
        }
        std::ostringstream stream;
        errors.Print(stream);
        return stream.str();
    }

    VoktAtomBiff* Skeleton() const { return universe.FetchByTypeAndName<VoktAtomBiff>("skeleton"); }

    TestServices services;
    VoktErrorHandler errors;
    VoktUniverse universe;
    VoktRigbake stage{nullptr, kSkeletonForAnimation};
};

}  // namespace

TEST_F(RigbakeComponent, LeavesTheFileInTheUniverse) {
    AddWorldAndRoots(kJoint);
    stage.Process(universe);
    ASSERT_NE(Skeleton(), nullptr);
    const SkeletonFileReader file(WriteBytes(Skeleton()->block, 0), false);
    EXPECT_EQ(file.jointCount, 1u);
    EXPECT_EQ(file.procedural, 0u);
    EXPECT_EQ(file.proceduralEnd, 0u);
}

TEST_F(RigbakeComponent, MissingRootsAreAnInternalFault) {
    AddWorld(kJoint);
    EXPECT_EQ(FailureText([this] { stage.Process(universe); }),
              "VoktRigbake couldn't find root joints atom");
    EXPECT_EQ(Skeleton(), nullptr);
}

TEST_F(RigbakeComponent, MissingWorldIsReportedFirst) {
    EXPECT_EQ(FailureText([this] { stage.Process(universe); }), "Couldn't find a world");
}

TEST_F(RigbakeComponent, SceneWithoutJointsIsError1100) {
    AddWorldAndRoots("<scene/>");
    EXPECT_EQ(ReportOf(stage), "Error: 1100 No skeleton found\n");
    ASSERT_NE(Skeleton(), nullptr);
    EXPECT_TRUE(Skeleton()->block.items.empty());
}

TEST_F(RigbakeComponent, SkeletonAtomStandsEvenAfterAFailure) {
    AddWorldAndRoots(R"(<scene><joint name="a"><joint name="A"/></joint></scene>)");
    EXPECT_EQ(FailureText([this] { stage.Process(universe); }),
              "ERROR: Duplicate joint name found in skeleton ('a')");
    EXPECT_NE(Skeleton(), nullptr);
}

TEST_F(RigbakeComponent, LimitOfJointsHoldsForAnimationAlone) {
    AddWorldAndRoots(FlatSkeleton(129));
    EXPECT_EQ(FailureText([this] { stage.Process(universe); }),
              "Can only handle 128 items in a skeleton used for animation. This skeleton has 129.");
    VoktRigbake unlimited(nullptr, 0);
    EXPECT_NO_THROW(unlimited.Process(universe));
}

TEST_F(RigbakeComponent, DefaultsAreDrivenKeysWithoutConstraints) {
    EXPECT_TRUE(stage.GetProceduralOptions().drivenKeys);
    EXPECT_FALSE(stage.GetProceduralOptions().jointConstraints);
    EXPECT_FALSE(stage.GetProceduralOptions().debugDependencies);
}

TEST_F(RigbakeComponent, OnlyZeroAndFalseAreFalse) {
    for (const char* off : {"0", "false"}) {
        stage.SetFlag("-outputDrivenKeys", "true");
        stage.SetFlag("-outputJointConstraints", "true");
        stage.SetFlag("-outputDrivenKeys", off);
        stage.SetFlag("-outputJointConstraints", off);
        EXPECT_FALSE(stage.GetProceduralOptions().drivenKeys);
        EXPECT_FALSE(stage.GetProceduralOptions().jointConstraints);
    }
    for (const char* on : {"no", "False", "FALSE", "00", "", "1"}) {
        stage.SetFlag("-outputDrivenKeys", "0");
        stage.SetFlag("-outputJointConstraints", "0");
        stage.SetFlag("-outputDrivenKeys", on);
        stage.SetFlag("-outputJointConstraints", on);
        EXPECT_TRUE(stage.GetProceduralOptions().drivenKeys);
        EXPECT_TRUE(stage.GetProceduralOptions().jointConstraints);
    }
}

TEST_F(RigbakeComponent, UnknownFlagIsError200) {
    try {
        stage.SetFlag("-vs", "");
        FAIL() << "nothing was thrown";
    } catch (const VoktError& error) {
        EXPECT_EQ(error.GetId(), 200);
        EXPECT_EQ(error.GetCauseMessage(), "-vs");
    }
}

TEST_F(RigbakeComponent, FlagsAreReadByTheirShortNames) {
    VoktCommandLineSyntax syntax;
    stage.AddFlags(syntax);
    const char* words[] = {"tool", "-odk", "0", "-ojc", "7", "-debugDependencies", "-vs"};
    syntax.Parse(7, words, 1);
    stage.ReadFlags(syntax);
    EXPECT_FALSE(stage.GetProceduralOptions().drivenKeys);
    EXPECT_TRUE(stage.GetProceduralOptions().jointConstraints);
    EXPECT_TRUE(stage.GetProceduralOptions().debugDependencies);
    AddWorldAndRoots(kJoint);
    EXPECT_EQ(CaptureOutput([this] { stage.Process(universe); }),
              "0::: 0, hips\n"
              "0:\thips,\tdepth: 0, parent: -1, lodLevel: 0\n");
}

TEST_F(RigbakeComponent, NothingIsPrintedWithoutTheVerboseFlag) {
    AddWorldAndRoots(kJoint);
    EXPECT_EQ(CaptureOutput([this] { stage.Process(universe); }), "");
}

TEST_F(RigbakeComponent, DrivenKeysAreWrittenByDefault) {
    AddWorldAndRoots(kDrivenJoint);
    stage.Process(universe);
    const std::string bytes = WriteBytes(Skeleton()->block, 0);
    EXPECT_EQ(bytes.substr(SkeletonFileReader(bytes, false).procedural, 4), "PJ01");
    EXPECT_NE(bytes.find("DK04"), std::string::npos);
}

TEST_F(RigbakeComponent, JointConstraintsAreWrittenWhereTheyAreWanted) {
    AddWorldAndRoots(kConstrainedJoint);
    stage.SetFlag("-outputJointConstraints", "true");
    stage.Process(universe);
    const std::string bytes = WriteBytes(Skeleton()->block, 0);
    EXPECT_EQ(bytes.substr(SkeletonFileReader(bytes, false).procedural, 4), "PJ01");
    EXPECT_NE(bytes.find("JC01"), std::string::npos);
}

TEST_F(RigbakeComponent, DrivenKeysThatNobodyWantsAreLeftOut) {
    AddWorldAndRoots(kDrivenJoint);
    stage.SetFlag("-outputDrivenKeys", "false");
    stage.Process(universe);
    EXPECT_EQ(SkeletonFileReader(WriteBytes(Skeleton()->block, 0), false).procedural, 0u);
}

TEST_F(RigbakeComponent, JointConstraintsAreLeftOutByDefault) {
    AddWorldAndRoots(kConstrainedJoint);
    stage.Process(universe);
    EXPECT_EQ(SkeletonFileReader(WriteBytes(Skeleton()->block, 0), false).procedural, 0u);
}

TEST_F(RigbakeComponent, FlagsStandInTheHelpInOrder) {
    VoktCommandLineSyntax syntax;
    stage.AddFlags(syntax);
    std::ostringstream help;
    syntax.PrintHelp(help, 119);
    const std::string text = help.str();
    const std::size_t verbose = text.find("-verboseSkeleton (-vs)");
    const std::size_t keys = text.find("-outputDrivenKeys (-odk) <boolean>");
    const std::size_t constraints = text.find("-outputJointConstraints (-ojc) <boolean>");
    const std::size_t debug = text.find("-debugDependencies ");
    ASSERT_NE(debug, std::string::npos);
    EXPECT_LT(verbose, keys);
    EXPECT_LT(keys, constraints);
    EXPECT_LT(constraints, debug);
}

TEST_F(RigbakeComponent, ErrorTextIsRegistered) {
    VoktRigbake second(nullptr, kSkeletonForAnimation);
    EXPECT_EQ(FailureText([this] { errors.Register(1100, "another text"); }),
              "Duplicate VoktError id registered");
}
