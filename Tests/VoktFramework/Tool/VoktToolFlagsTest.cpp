#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"
#include "VoktFramework/RecordingTool.h"

#include <Platform/Clock.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

using Step = Script::Step;

std::string CommandLineFailure(const std::string& cause) {
    return kBanner + "Error: 101 An error occurred while parsing the command line; " + cause +
           "\n" + kFailedEnd;
}

bool StartsWith(const std::string& text, const std::string& start) {
    return text.rfind(start, 0) == 0;
}

/// The number between a line's start and its end; -1 when the line reads otherwise.
double NumberBetween(const std::string& line, const std::string& start, const std::string& end) {
    if (!StartsWith(line, start) || line.size() <= start.size() + end.size()) return -1;
    if (line.substr(line.size() - end.size()) != end) return -1;
    return std::strtod(line.c_str() + start.size(), nullptr);
}

TEST(TimeTool, PrintsALineForEachStageAndTheTotal) {
    Script script;
    script.components = {"a", "b", "c", "d", "e", "f"};
    script.actions["c.Process"] = [](const Step&) {
        const std::uint32_t start = Platform::ClockMilliseconds();
        while (Platform::ClockMilliseconds() - start < 30) continue;
    };
    const std::uint32_t start = Platform::ClockMilliseconds();
    const ProgramEnd end = Play(script, {"-timetool", "1"});
    const std::uint32_t whole = Platform::ClockMilliseconds() - start;
    EXPECT_EQ(end.status, 0);
    ASSERT_TRUE(StartsWith(end.output, kBanner + "Tool timings:\n"));

    std::istringstream lines(end.output.substr(kBanner.size()));
    std::string line;
    std::getline(lines, line);
    double sum = 0;
    for (int stage = 0; stage < 6; ++stage) {
        std::getline(lines, line);
        const double seconds =
            NumberBetween(line, "Stage " + std::to_string(stage) + ": ", " seconds.");
        EXPECT_GE(seconds, stage == 2 ? 0.029 : 0.0) << line;
        sum += seconds;
    }
    EXPECT_LE(sum, whole / 1000.0 + 1e-6);
    std::getline(lines, line);
    EXPECT_NEAR(NumberBetween(line, "Total: ", " seconds."), sum, 1e-6) << line;
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(TimeTool, PrintsNothingWhenAStageFails) {
    Script script;
    script.actions["a.Process"] = [](const Step&) { throw std::runtime_error("text"); };
    EXPECT_EQ(Play(script, {"-tt", "1"}).output,
              kBanner + "Error: 103 An error occurred during tool processing; text\n" + kFailedEnd);
}

TEST(TimeTool, PrintsNothingWhenSwitchedOffOrTheLineIsRefused) {
    Script script;
    EXPECT_EQ(Play(script, {"-tt", "false"}).output, kBanner);
    script.actions["a.AddFlags"] = [](const Step& step) {
        step.syntax->AddFlag("-in", "-i", "", VoktCommandLineSyntax::kRequired);
    };
    const ProgramEnd end = Play(script, {"-timetool", "1"});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, CommandLineFailure("A required flag \"-in\" was not set."));
}

TEST(TimeTool, NeedsItsValue) {
    Script script;
    EXPECT_EQ(Play(script, {"-timetool"}).output,
              CommandLineFailure("Missing argument on flag \"-timetool\"."));
}

TEST(TimeTool, AddsNoTimesUnlessSwitchedOn) {
    for (const bool on : {false, true}) {
        Script script;
        script.components = {"a", "b"};
        testing::internal::CaptureStdout();
        RecordingTool tool(script);
        const char* const words[] = {"tool", "-tt", on ? "1" : "0"};
        tool.Run(3, words);
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(tool.CountStageTimes(), on ? 2u : 0u);
    }
}

class LogFile : public testing::Test {
  protected:
    LogFile() { std::filesystem::permissions(folder.Path(), std::filesystem::perms::all); }

    const TemporaryFolder folder;
    const std::string log = folder.Path("run.log");
    Script script;
};

TEST_F(LogFile, HoldsWhatTheStagesAndTheReportPrintAndNothingElse) {
    script.actions["a.Validate"] = [](const Step&) { std::cout << "validating" << std::endl; };
    script.actions["a.Process"] = [](const Step&) {
        std::cout << "by stream" << std::endl;
        std::printf("by stdio\n");
        throw std::runtime_error("text");
    };
    script.actions["a.destructor"] = [](const Step&) { std::cout << "the end" << std::endl; };
    const std::string logged =
        "by stream\nby stdio\nError: 103 An error occurred during tool processing; text\nthe "
        "end\n";
    const ProgramEnd end = Play(script, {"-logfile", log});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, kBanner + "validating\n" + logged + kFailedEnd);
    EXPECT_EQ(WithLineFeeds(folder.ReadFile("run.log")), logged);
}

TEST_F(LogFile, HoldsTheTimings) {
    const ProgramEnd end = Play(script, {"-log", log, "-tt", "1"});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, kBanner + WithLineFeeds(folder.ReadFile("run.log")));
    EXPECT_TRUE(StartsWith(WithLineFeeds(folder.ReadFile("run.log")), "Tool timings:\nStage 0: "));
}

TEST_F(LogFile, IsNotTouchedByARunThatStopsBeforeProcessing) {
    script.actions["a.Validate"] = [](const Step&) { throw std::runtime_error("text"); };
    EXPECT_EQ(Play(script, {"-log", log}).status, 1);
    EXPECT_FALSE(std::filesystem::exists(log));
}

TEST_F(LogFile, ThatCannotBeOpenedIsAnInternalError) {
    const std::string missing = folder.Path("none/run.log");
    EXPECT_EQ(WithoutPositions(Play(script, {"-log", missing}).output),
              kBanner + "Error: 2 An internal error occurred; could not open '" + missing +
                  "' for write\n" + kFailedEnd);
    EXPECT_EQ(std::count(script.journal.begin(), script.journal.end(), "a.Process"), 0);
}

TEST_F(LogFile, ThatIsReadOnlyIsRefusedBeforeTheComponentsAreAsked) {
    folder.WriteFile("run.log", "");
    using std::filesystem::perms;
    std::filesystem::permissions(log, perms::owner_read | perms::group_read | perms::others_read);
    // Where the saving stage judges outputs, the parser leaves this one alone too.
    script.actions["a.AddFlags"] = [](const Step& step) {
        step.syntax->SetSkipFlagOutputChecks(true);
    };
    ProgramEnd end{};
    {
        const OrdinaryUser user;
        end = Play(script, {"-log", log});
    }
    EXPECT_EQ(end.output, kBanner +
                              "Error: 102 An error occurred while validating arguments; Log file "
                              "'" +
                              log + "' is not writeable \n" + kFailedEnd);
    EXPECT_EQ(std::count(script.journal.begin(), script.journal.end(), "a.Validate"), 0);
}

}  // namespace
