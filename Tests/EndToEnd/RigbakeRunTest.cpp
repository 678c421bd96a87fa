#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace std::string_literals;

/// The skeleton file of a single joint, but for its signature and hash.
void ExpectOneJointFile(const std::string& bytes) {
    ASSERT_EQ(bytes.size(), 120u);
    EXPECT_EQ(bytes.substr(0, 4), "SK08");
    EXPECT_EQ(bytes.substr(8, 40),
              "\0\0\1\0"
              "\x24\0\0\0\x30\0\0\0\x5C\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s);
    EXPECT_EQ(bytes.substr(48, 8), "\1\0\xFF\xFF\xFF\xFF\xFF\xFF"s);
    EXPECT_EQ(bytes.substr(56, 8), std::string(8, '\0'));
    const std::string one = "\0\0\x80\x3F"s;
    const std::string zero(4, '\0');
    EXPECT_EQ(bytes.substr(64, 48),
              zero + zero + zero + one + zero + zero + zero + zero + one + one + one + zero);
    EXPECT_EQ(bytes.substr(116, 4), zero);
}

TEST(RigbakeRun, OneJointBecomesAFileOf120Bytes) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "QEL SDK version 1.28.3: " + BuiltProgram("rigbake") + "\n");
    EXPECT_EQ(run.errors, "");
    ExpectOneJointFile(folder.ReadFile("rig.bin"));
}

TEST(RigbakeRun, NoArgumentsPrintTheHelpAndSucceed) {
    RunFolder folder;
    const ProgramResult run = folder.Rigbake({});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(WithoutBanner(run.output).substr(0, 16), "Required flags:\n");
    EXPECT_NE(run.output.find("  -forceWrite (-fw)          Attempt to make writable/check out "
                              "read-only      \n    <boolean>                output files"),
              std::string::npos);
}

TEST(RigbakeRun, BothFormsDifferInByteOrderAlone) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "a/b/rig.bin", "-bothendian"}).status,
              0);
    EXPECT_FALSE(folder.Has("a/b/rig.bin"));
    const std::string little = folder.ReadFile("a/b/rig.binLE");
    std::string big = folder.ReadFile("a/b/rig.binBE");
    ExpectOneJointFile(little);
    ASSERT_EQ(big.size(), little.size());
    // Elements of two bytes: the counts of the header and the joint record; everything else is four
    // bytes wide.
    std::string swapped = little;
    const auto reverse = [&swapped](std::size_t at, std::size_t size) {
        std::reverse(swapped.begin() + static_cast<std::ptrdiff_t>(at),
                     swapped.begin() + static_cast<std::ptrdiff_t>(at + size));
    };
    for (const std::size_t at : {8u, 10u, 48u, 50u, 52u, 54u}) reverse(at, 2);
    for (std::size_t at = 4; at < 120; at += 4)
        if (at != 8 && (at < 48 || at >= 64)) reverse(at, 4);
    EXPECT_EQ(big, swapped);
}

TEST(RigbakeRun, TheSameRunTwiceGivesTheSameBytes) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "one"}).status, 0);
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "two"}).status, 0);
    EXPECT_EQ(folder.ReadFile("one"), folder.ReadFile("two"));
}

TEST(RigbakeRun, AnUnknownFlagIsAnErrorOfTheCommandLine) {
    RunFolder folder;
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-outt", "rig.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        WithoutBanner(run.output),
        "Error: 101 An error occurred while parsing the command line; Unknown flag \"-outt\".\n"
        "Error: Tool encountered errors\n");
}

TEST(RigbakeRun, AMissingInputIsNotReadable) {
    RunFolder folder;
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: 101 An error occurred while parsing the command line; Input file "
              "\"scene.qeli\" is not "
              "readable.\nError: Tool encountered errors\n");
}

TEST(RigbakeRun, NamesThatDifferInLetterCaseAreRefused) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "SCENE.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: 102 An error occurred while validating arguments; ERROR: Input and output "
              "filenames are "
              "identical.\nError: Tool encountered errors\n");
}

TEST(RigbakeRun, AnOlderDocumentIsReadOnDemandAlone) {
    RunFolder folder;
    std::string document = OneJointDocument();
    const std::string version = "1_28_1";
    document.replace(document.find(version), version.size(), "1_27_3");
    folder.WriteFile("scene.qeli", document);
    for (const char* off : {"0", "false"}) {
        const ProgramResult run =
            folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin", "-au", off});
        EXPECT_EQ(run.status, 1) << off;
        EXPECT_EQ(MaskPlaces(WithoutBanner(run.output)),
                  "Error: 2 An internal error occurred; .qeli instance is not the correct version. "
                  "Expected version namespace of \"http://qel.example/ns/qeli/1_28_1/qeli\" but "
                  "got \"http://qel.example/ns/qeli/1_27_3/qeli\". : scene.qeli <PLACE>\n"
                  "Error: Tool encountered errors\n");
    }
    for (const char* on : {"1", "true", "FALSE", "00"}) {
        EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", on, "-autoupdate", on}).status, 0);
        ExpectOneJointFile(folder.ReadFile(on));
    }
}

TEST(RigbakeRun, ABrokenDocumentNamesLineAndColumn) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", Document("<scene><joint name=\"a\"></scene>"));
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(MaskPlaces(WithoutBanner(run.output)),
              "Error: 1 An internal error occurred; Libxml2 parse error: 76 in \"scene.qeli\" Line "
              "3 Column 32 : "
              "scene.qeli <PLACE>\nError: Tool encountered errors\n");
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST(RigbakeRun, AFailureOfAnObjectNamesItsPath) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", Document("<scene><joint name=\"a\"><node name=\"n\"><joint "
                                            "name=\"b\"/></node></joint></scene>"));
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(MaskPlaces(WithoutBanner(run.output)),
              "Error: 1 An internal error occurred; Joint parented to non-joint : scene.qeli "
              "{||a|n|b} <PLACE>\n"
              "Error: Tool encountered errors\n");
}

TEST(RigbakeRun, ASceneWithoutJointsHasNoSkeleton) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", Document("<scene><node name=\"n\"/></scene>"));
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: 1100 No skeleton found : scene.qeli\nError: Tool encountered errors\n");
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST(RigbakeRun, MoreThan128JointsAreRefused) {
    RunFolder folder;
    std::string joints;
    for (int i = 1; i < 128; ++i) joints += "<joint name=\"j" + std::to_string(i) + "\"/>";
    const auto bake = [&] {
        folder.WriteFile("scene.qeli",
                         Document("<scene><joint name=\"root\">" + joints + "</joint></scene>"));
        return folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    };
    EXPECT_EQ(bake().status, 0);
    joints += "<joint name=\"last\"/>";
    const ProgramResult run = bake();
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(MaskPlaces(WithoutBanner(run.output)),
              "Error: 1 An internal error occurred; Can only handle 128 items in a skeleton used "
              "for animation. This skeleton has 129. : scene.qeli <PLACE>\n"
              "Error: Tool encountered errors\n");
}

TEST(RigbakeRun, AWarningLeavesTheStatusAtZero) {
    RunFolder folder;
    folder.WriteFile("scene.qeli",
                     Document("<scene><joint name=\"root\"/><joint name=\"b\"/></scene>"));
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(WithoutBanner(run.output),
              "Warning: 10100 Multiple skeletons found. Only the first one will be exported "
              "without -multiRoot "
              "option. : scene.qeli\n");
    ExpectOneJointFile(folder.ReadFile("rig.bin"));
}

TEST(RigbakeRun, TheLogHoldsTheHandlersLinesAndNeitherTheBannerNorTheLastLine) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", Document("<scene><node name=\"n\"/></scene>"));
    const ProgramResult run =
        folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", "run.log"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: 1100 No skeleton found : scene.qeli\nError: Tool encountered errors\n");
    EXPECT_EQ(WithLineFeeds(folder.ReadFile("run.log")),
              "Error: 1100 No skeleton found : scene.qeli\n");
}

TEST(RigbakeRun, WarningsStandAheadOfErrorsInTheReportAndInTheLog) {
    RunFolder folder;
    folder.WriteFile("scene.qeli",
                     Document("<scene><joint name=\"root\"/><joint name=\"b\"/></scene>"));
    const ProgramResult run =
        folder.Rigbake({"-in", "scene.qeli", "-out", ".", "-log", "run.log", "-timetool", "1"});
    const std::string report =
        "Warning: 10100 Multiple skeletons found. Only the first one will be exported without "
        "-multiRoot option. : scene.qeli\n"
        "Error: 204 Cannot open file for write; Failed to open file for Biff write. : "
        "scene.qeli\n";
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output), report + "Error: Tool encountered errors\n");
    EXPECT_EQ(WithLineFeeds(folder.ReadFile("run.log")), report);
}

TEST(RigbakeRun, ARunThatStopsBeforeItsStagesLeavesNoLog) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "o", "-log", "l", "-cua", "x"}).status,
              1);
    EXPECT_FALSE(folder.Has("l"));
}

TEST(RigbakeRun, TimingsNameSixStagesAndTheTotal) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    const ProgramResult run =
        folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin", "-timetool", "1"});
    EXPECT_EQ(run.status, 0);
    const std::string text = WithoutBanner(run.output);
    EXPECT_EQ(text.substr(0, 22), "Tool timings:\nStage 0:");
    std::size_t lines = 0;
    for (const char c : text) lines += c == '\n';
    EXPECT_EQ(lines, 8u);
    EXPECT_NE(text.find("\nStage 5: "), std::string::npos);
    EXPECT_NE(text.find("\nTotal: "), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 10), " seconds.\n");
}

TEST(RigbakeRun, TimingsAloneFailAtTheRequiredFlag) {
    RunFolder folder;
    const ProgramResult run = folder.Rigbake({"-timetool", "1"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: 101 An error occurred while parsing the command line; A required flag "
              "\"-in\" was not set.\n"
              "Error: Tool encountered errors\n");
}

TEST(RigbakeRun, AFullDiskIsAnErrorAndNoSuccess) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "/dev/full"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output).substr(0, 9), "Error: 2 ");
    EXPECT_NE(run.output.find("/dev/full"), std::string::npos);
}

TEST(RigbakeRun, AFileInTheWayOfAFolderIsNamed) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    folder.WriteFile("taken", "");
    const ProgramResult below = folder.Rigbake({"-in", "scene.qeli", "-out", "taken/rig.bin"});
    EXPECT_EQ(below.status, 1);
    EXPECT_EQ(MaskPlaces(WithoutBanner(below.output)),
              "Error: 2 An internal error occurred; Cannot create folder '" +
                  WithSeparators(folder.Path("taken")) +
                  "' since a file of that name already exists : scene.qeli <PLACE>\n"
                  "Error: Tool encountered errors\n");
}

TEST(RigbakeRun, AnOutputThatCannotBeOpenedIsError204) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    std::filesystem::create_directory(folder.GetPath() / "rig.bin");
    const ProgramResult run = folder.Rigbake({"-in", "scene.qeli", "-out", "rig.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(
        WithoutBanner(run.output),
        "Error: 204 Cannot open file for write; Failed to open file for Biff write. : scene.qeli\n"
        "Error: Tool encountered errors\n");
}

TEST(RigbakeRun, AClosedStandardOutputDoesNotChangeTheRun) {
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    EXPECT_EQ(folder.Run("rigbake", {"-in", "scene.qeli", "-out", "closed.bin"}, {}, ">&-").status,
              0);
    ExpectOneJointFile(folder.ReadFile("closed.bin"));
    EXPECT_EQ(
        folder
            .Run("rigbake", {"-in", "scene.qeli", "-out", "closedlog.bin", "-log", "l.txt", "-vs"},
                 {}, ">&- 2>&-")
            .status,
        0);
    ExpectOneJointFile(folder.ReadFile("closedlog.bin"));
    EXPECT_EQ(WithLineFeeds(folder.ReadFile("l.txt")),
              "0::: 0, root\n0:\troot,\tdepth: 0, parent: -1, lodLevel: 0\n");
}

TEST(RigbakeRun, AFullStandardOutputDoesNotChangeTheRun) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    EXPECT_EQ(
        folder.Run("rigbake", {"-in", "scene.qeli", "-out", "full.bin", "-vs"}, {}, ">/dev/full")
            .status,
        0);
    ExpectOneJointFile(folder.ReadFile("full.bin"));
}

TEST(RigbakeRun, AConfiguredHashServerWithoutAProxyFailsAtLocation58) {
    if (kIsWindows) GTEST_SKIP() << "the proxy beside the tool is found wherever PATH leads";
    RunFolder folder;
    folder.WriteFile("scene.qeli", OneJointDocument());
    const ProgramResult run =
        folder.Run("rigbake", {"-in", "scene.qeli", "-out", "rig.bin"},
                   {{"QEL_HASH_SERVER_NAME", "hashes"}, {"PATH", "/nowhere"}});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(WithoutBanner(run.output),
              "Error: 2 An internal error occurred; QelHashClientUtil::Initialise : Unable to "
              "spawn proxy process "
              "(58:2)\nError: Tool encountered errors\n");
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST(RigbakeRun, TheExamplesBake) {
    RunFolder folder;
    const std::string examples = std::string(RIGBAKE_SOURCE_ROOT) + "/Examples/";
    for (const char* name : {"biped", "quadruped"}) {
        const ProgramResult run = folder.Rigbake({"-in", examples + name + ".qeli", "-out", name});
        EXPECT_EQ(run.status, 0) << run.output;
        EXPECT_EQ(WithoutBanner(run.output), "");
    }
    const std::string driven = examples + "biped-procedural.qeli";
    for (const char* constraints : {"false", "true"}) {
        const ProgramResult run =
            folder.Rigbake({"-in", driven, "-out", constraints, "-ojc", constraints});
        EXPECT_EQ(run.status, 0) << run.output;
        EXPECT_NE(folder.ReadFile(constraints).find("PJ01"), std::string::npos);
        EXPECT_NE(folder.ReadFile(constraints).find("DK04"), std::string::npos);
    }
    EXPECT_EQ(folder.ReadFile("false").find("JC01"), std::string::npos);
    EXPECT_NE(folder.ReadFile("true").find("JC01"), std::string::npos);
    const ProgramResult flail =
        folder.Rigbake({"-in", examples + "flail.qeli", "-out", "flail", "-multiRoot"});
    EXPECT_EQ(flail.status, 0) << flail.output;
    const std::string biped = folder.ReadFile("biped");
    ASSERT_GT(biped.size(), 48u);
    EXPECT_EQ(static_cast<unsigned char>(biped[10]), 60u);
    EXPECT_EQ(static_cast<unsigned char>(folder.ReadFile("quadruped")[10]), 41u);
    EXPECT_EQ(static_cast<unsigned char>(folder.ReadFile("flail")[10]), 11u);
}

}  // namespace
