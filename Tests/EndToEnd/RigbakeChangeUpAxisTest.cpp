#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

/// Two joints in a world whose up axis is z; the upper one is animated.
std::string TwoJoints(const std::string& channel) {
    std::string document = Document(R"(<scene><joint name="root"><translate>1 2 3</translate>
<joint name="tip"><translate>1 2 3</translate></joint>
<anim name="a" target="||root"><animChannel name="t" channel="translate">)" +
                                    channel + "</animChannel></anim></joint></scene>");
    const std::string root = "<QEL ";
    return document.replace(document.find(root), root.size(), root + R"(upaxis="z" )");
}

const std::string kCurve =
    R"(<animData interp="QELHermite" numKeys="2" keyStride="3"><keyValues>1 2 3 4 5 6</keyValues>
<keyTimes>0 1</keyTimes><tangents>0 0 0 0 0 0</tangents></animData>)";

TEST(ChangeUpAxisRun, KeepAndTheAxisThatIsThereChangeNothing) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", TwoJoints(kCurve));
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "plain"}).status, 0);
    for (const char* axis : {"keep", "z"}) {
        EXPECT_EQ(
            folder.Rigbake({"-in", "scene.qeli", "-out", "same", "-cua", axis, "-cuaa", "true"})
                .status,
            0);
        EXPECT_EQ(folder.ReadFile("same"), folder.ReadFile("plain")) << axis;
    }
}

TEST(ChangeUpAxisRun, TheTurnAloneIsNoPartOfTheSkeleton) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", TwoJoints(kCurve));
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "plain"}).status, 0);
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "turned", "-cua", "y"}).status, 0);
    EXPECT_EQ(folder.ReadFile("turned"), folder.ReadFile("plain"));
}

TEST(ChangeUpAxisRun, WithAnimationTheRootsTransformTurns) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", TwoJoints(kCurve));
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "plain"}).status, 0);
    const ProgramResult run =
        folder.Rigbake({"-in", "scene.qeli", "-out", "turned", "-cua", "y", "-cuaa", "true"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(WithoutBanner(run.output), "");
    // The root's rotation and translation stand behind the two joint records. Their bits were
    // computed apart from the program.
    std::string wanted = folder.ReadFile("plain");
    ASSERT_EQ(wanted.size(), 176u);
    const std::string one = "\0\0\x80\x3F"s, zero(4, '\0');
    EXPECT_EQ(wanted.substr(64, 28), zero + zero + zero + one + one + "\0\0\0\x40\0\0\x40\x40"s);
    wanted.replace(64, 28,
                   "\xF2\x04\x35\xBF"s + zero + zero + "\xF4\x04\x35\x3F"s + one +
                       "\0\0\x40\x40\xFE\xFF\xFF\xBF"s);
    EXPECT_EQ(folder.ReadFile("turned"), wanted);
}

TEST(ChangeUpAxisRun, AnimationThatCannotTurnFailsWithItsPath) {
    RunFolder folder;
    folder.WriteFile("scene.qeli",
                     TwoJoints(R"(<animData interp="Timestep" numKeys="1" duration="1">
<keyValues>1</keyValues></animData>)"));
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "plain", "-cua", "y"}).status, 0);
    const ProgramResult run =
        folder.Rigbake({"-in", "scene.qeli", "-out", "turned", "-cua", "y", "-cuaa", "true"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(MaskPlaces(WithoutBanner(run.output)),
              "Error: 1 An internal error occurred; Unexpected stride for anim channel: translate "
              ": scene.qeli {||__VokChangeUpAxis__magic_node|root|a|t} <PLACE>\n"
              "Error: Tool encountered errors\n");
    EXPECT_FALSE(folder.Has("turned"));
}

}  // namespace
