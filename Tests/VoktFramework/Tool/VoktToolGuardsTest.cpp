#include "VoktFramework/RecordingTool.h"

#include <QelTools/Exception.h>
#include <VokLib/Links/VokPath.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using Step = Script::Step;

/// One step of a component and the start of the report of what it throws.
struct GuardedStep {
    const char* step;
    const char* report;
};

std::ostream& operator<<(std::ostream& out, const GuardedStep& guarded) {
    return out << guarded.step;
}

class ToolGuards : public testing::TestWithParam<GuardedStep> {
  protected:
    /// The report of a run in which the step does this.
    std::string ReportOf(const Script::Action& action) {
        Script script;
        script.actions[GetParam().step] = action;
        const ProgramEnd end = Play(script, {"-tt", "0"});
        EXPECT_EQ(end.status, 1);
        const std::size_t reportSize = end.output.size() - kBanner.size() - kFailedEnd.size();
        EXPECT_EQ(end.output.substr(0, kBanner.size()), kBanner);
        EXPECT_EQ(end.output.substr(kBanner.size() + reportSize), kFailedEnd);
        return end.output.substr(kBanner.size(), reportSize);
    }

    bool IsProcessing() const { return std::string(GetParam().step) == "a.Process"; }
};

INSTANTIATE_TEST_SUITE_P(
    Steps, ToolGuards,
    testing::Values(
        GuardedStep{"a.constructor",
                    "Error: 100 An error occurred while adding components to the tool"},
        GuardedStep{"a.Initialise",
                    "Error: 100 An error occurred while adding components to the tool"},
        GuardedStep{"a.AddFlags",
                    "Error: 100 An error occurred while adding components to the tool"},
        GuardedStep{"a.ReadFlags", "Error: 101 An error occurred while parsing the command line"},
        GuardedStep{"a.Validate", "Error: 102 An error occurred while validating arguments"},
        GuardedStep{"a.Process", "Error: 103 An error occurred during tool processing"}),
    [](const auto& guarded) {
        return std::string(guarded.param.step).substr(std::string("a.").size());
    });

TEST_P(ToolGuards, ANumberedErrorIsReportedAsItIs) {
    EXPECT_EQ(ReportOf([](const Step&) { throw VoktError(200, "-x"); }),
              "Error: 200 Unhandled argument; -x\n");
}

TEST_P(ToolGuards, AStandardExceptionBecomesTheStepsErrorWithItsTextAsCause) {
    EXPECT_EQ(ReportOf([](const Step&) { throw std::runtime_error("text"); }),
              std::string(GetParam().report) + "; text\n");
}

TEST_P(ToolGuards, AnythingElseBecomesTheStepsErrorWithoutACause) {
    EXPECT_EQ(ReportOf([](const Step&) { throw 42; }), std::string(GetParam().report) + "\n");
}

TEST_P(ToolGuards, AnInternalFailureKeepsItsPositionInProcessingAlone) {
    const std::string report = ReportOf([](const Step&) {
        throw QelTools::Common::Exception("text", {"Libraries/A/B.cpp", 12});
    });
    EXPECT_EQ(report, IsProcessing() ? "Error: 2 An internal error occurred; text "
                                       "<Libraries/A/B.cpp:12>\n"
                                     : std::string(GetParam().report) + "; text\n");
}

TEST_P(ToolGuards, ASceneFailureKeepsItsObjectInProcessingAlone) {
    const VokWorld world;
    const std::string report = ReportOf([&world](const Step&) {
        throw VokException("text", VokPath(world.GetHierarchy()).GetText(),
                           {"Libraries/A/B.cpp", 12});
    });
    EXPECT_EQ(report, IsProcessing() ? "Error: 1 An internal error occurred; text {|} "
                                       "<Libraries/A/B.cpp:12>\n"
                                     : std::string(GetParam().report) + "; text\n");
}

class ToolWithoutBanner : public RecordingTool {
  public:
    using RecordingTool::RecordingTool;
    void PrintBanner(const char*) override { throw std::runtime_error("text"); }
};

class ToolWithoutHelp : public RecordingTool {
  public:
    using RecordingTool::RecordingTool;
    void PrintHelp() override { throw std::runtime_error("text"); }
};

/// What a tool prints that fails without arguments.
template <class Tool>
std::string OutputWithoutArguments() {
    Script script;
    testing::internal::CaptureStdout();
    {
        Tool tool(script);
        const char* const words[] = {"tool"};
        EXPECT_THROW(tool.Run(1, words), QelTools::Common::TextException);
    }
    return testing::internal::GetCapturedStdout();
}

TEST(ToolGuardsAtTheStart, ABannerThatFailsIsAnUnknownError) {
    EXPECT_EQ(OutputWithoutArguments<ToolWithoutBanner>(), "Error: 0 An unknown error occurred\n");
}

TEST(ToolGuardsAtTheStart, HelpThatFailsIsAnErrorOfTheCommandLine) {
    EXPECT_EQ(OutputWithoutArguments<ToolWithoutHelp>(),
              kBanner + "Error: 101 An error occurred while parsing the command line; text\n");
}

TEST(ToolGuardsOnRegistration, TwoTextsOfOneIdAreAFailureOfAdding) {
    Script script;
    script.components = {"a", "b"};
    script.actions["a.constructor"] = [](const Step&) {
        VoktErrorHandler::Get().Register(1100, "one");
    };
    script.actions["b.constructor"] = [](const Step&) {
        VoktErrorHandler::Get().Register(1100, "two");
    };
    EXPECT_EQ(Play(script, {}).output,
              kBanner +
                  "Error: 100 An error occurred while adding components to the tool; Duplicate "
                  "VoktError id registered\n" +
                  kFailedEnd);
}

}  // namespace
