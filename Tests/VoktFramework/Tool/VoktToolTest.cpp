#include "VoktFramework/RecordingTool.h"

#include <QelTools/Exception.h>
#include <VoktFramework/Atoms/VoktAtomString.h>
#include <VoktFramework/Atoms/VoktAtomStringArray.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktFramework/Saving/VoktBinaryFilename.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

namespace {

using Journal = std::vector<std::string>;
using Step = Script::Step;

/// Any argument at all, so that a run is no request for help.
const std::vector<std::string> kAnyRun = {"-tt", "0"};

std::string Failed(const std::string& report) {
    return kBanner + report + kFailedEnd;
}

TEST(ToolDriver, EveryStepIsDoneForAllComponentsBeforeTheNext) {
    Script script;
    script.components = {"a", "b", "c"};
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, kBanner);
    Journal expected;
    for (const char* step : {"constructor", "Initialise", "AddFlags", "ReadFlags", "Validate",
                             "Process", "destructor"})
        for (const char* component : {"a.", "b.", "c."})
            expected.push_back(std::string(component) + step);
    EXPECT_EQ(script.journal, expected);
}

TEST(ToolDriver, NoArgumentsPrintTheHelpAndRunNoStage) {
    Script script;
    const ProgramEnd end = Play(script, {});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output.rfind(kBanner, 0), 0u);
    const std::size_t timeTool = end.output.find("-timetool");
    EXPECT_NE(end.output.find("-logfile", timeTool), std::string::npos);
    EXPECT_EQ(script.journal,
              (Journal{"a.constructor", "a.Initialise", "a.AddFlags", "a.destructor"}));
}

TEST(ToolDriver, TheToolsOwnFlagsAreDeclaredFirst) {
    Script script;
    script.actions["a.AddFlags"] = [](const Step& step) {
        EXPECT_EQ(step.syntax->UsageCount("-timetool"), 0);
        step.syntax->AddFlag("-timetool", "-tt", "again");
    };
    EXPECT_EQ(Play(script, kAnyRun).output,
              Failed("Error: 100 An error occurred while adding components to the tool; Flag name "
                     "\"-timetool\" or short name \"-tt\" used twice with conflicting "
                     "arguments.\n"));
}

TEST(ToolDriver, DeclarationsAreCheckedWithTheComponentsAreAdded) {
    Script script;
    script.actions["a.AddFlags"] = [](const Step& step) {
        step.syntax->AddFlag("-x", "", "", VoktCommandLineSyntax::kShared);
        step.syntax->AddFlagArgument(VoktArgumentType::String);
        step.syntax->AddFlag("-x", "", "", VoktCommandLineSyntax::kShared);
    };
    EXPECT_EQ(Play(script, {}).output,
              Failed("Error: 100 An error occurred while adding components to the tool; Two "
                     "definitions of flag \"-x\" supplied different numbers of arguments.\n"));
}

TEST(ToolDriver, TheUniverseStartsWithFolderAndArguments) {
    Script script;
    script.actions["a.Process"] = [](const Step& step) {
        const auto* folder = step.universe->FetchByTypeAndName<VoktAtomString>("VoktTool_cwd");
        ASSERT_NE(folder, nullptr);
        EXPECT_EQ(folder->value, std::filesystem::current_path().string());
        const auto* arguments =
            step.universe->FetchByTypeAndName<VoktAtomStringArray>("VoktTool_args");
        ASSERT_NE(arguments, nullptr);
        EXPECT_EQ(arguments->values, (Journal{"tool", "-tt", "0"}));
    };
    EXPECT_EQ(Play(script, kAnyRun).status, 0);
}

TEST(ToolDriver, ALaterStageSeesTheAtomsOfAnEarlierOne) {
    Script script;
    script.components = {"a", "b"};
    VoktAtom* added = nullptr;
    script.actions["a.Process"] = [&added](const Step& step) {
        auto atom = std::make_unique<VoktAtomString>();
        added = atom.get();
        step.universe->Add(std::move(atom), "left");
    };
    VoktAtom* found = nullptr;
    script.actions["b.Process"] = [&found](const Step& step) {
        found = step.universe->FetchByTypeAndName("VoktAtomString", "left");
    };
    EXPECT_EQ(Play(script, kAnyRun).status, 0);
    EXPECT_NE(found, nullptr);
    EXPECT_EQ(found, added);
}

TEST(ToolDriver, AtomsDieWhenAStageFails) {
    struct Atom : VoktAtom {
        explicit Atom(bool& flag) : ended(flag) {}
        ~Atom() override { ended = true; }
        std::string GetType() const override { return "Atom"; }
        bool& ended;
    };
    Script script;
    bool ended = false;
    bool endedBeforeTheComponents = false;
    script.actions["a.Process"] = [&ended](const Step& step) {
        step.universe->Add(std::make_unique<Atom>(ended), "");
        throw VoktError(1100);
    };
    script.actions["a.destructor"] = [&](const Step&) { endedBeforeTheComponents = ended; };
    EXPECT_EQ(Play(script, kAnyRun).status, 1);
    EXPECT_TRUE(endedBeforeTheComponents);
}

TEST(ToolDriver, NoStageRunsBehindAFailedOne) {
    Script script;
    script.components = {"a", "b", "c"};
    script.actions["b.Process"] = [](const Step&) { throw VoktError(204, "cause"); };
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, Failed("Error: 204 Cannot open file for write; cause\n"));
    EXPECT_EQ(std::count(script.journal.begin(), script.journal.end(), "a.Process"), 1);
    EXPECT_EQ(std::count(script.journal.begin(), script.journal.end(), "c.Process"), 0);
    EXPECT_EQ(script.journal.back(), "c.destructor");
}

TEST(ToolDriver, WarningsAloneAreASuccess) {
    Script script;
    script.actions["a.Process"] = [](const Step&) {
        VoktErrorHandler::Get().SetContext("scene.qeli");
        VoktErrorHandler::Get().Add(VoktError(10000));
    };
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, kBanner + "Warning: 10000 An unknown warning occurred : scene.qeli\n");
}

TEST(ToolDriver, AnErrorThatWasOnlyAddedFailsTheRunAtItsEnd) {
    Script script;
    script.components = {"a", "b"};
    script.actions["a.Process"] = [](const Step&) { VoktErrorHandler::Get().Add(VoktError(202)); };
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, Failed("Error: 202 A problem occurred while importing references\n"));
    EXPECT_EQ(std::count(script.journal.begin(), script.journal.end(), "b.Process"), 1);
}

TEST(ToolDriver, TheFileNameServiceLivesAsLongAsTheTool) {
    Script script;
    script.actions["a.constructor"] = [](const Step&) {
        EXPECT_TRUE(VoktBinaryFilename::Exists());
    };
    script.actions["a.destructor"] = [](const Step&) { EXPECT_TRUE(VoktBinaryFilename::Exists()); };
    EXPECT_EQ(Play(script, kAnyRun).status, 0);
    EXPECT_FALSE(VoktBinaryFilename::Exists());
}

TEST(ToolDriver, TheErrorHandlerIsGoneBehindTheReport) {
    Script script;
    bool existed = true;
    script.actions["a.destructor"] = [&existed](const Step&) {
        existed = VoktErrorHandler::Exists();
    };
    EXPECT_EQ(Play(script, kAnyRun).status, 0);
    EXPECT_FALSE(existed);
}

TEST(ToolDriver, AnErrorHandlerOfSomebodyElseRefusesTheRun) {
    const VoktErrorHandler handler;
    Script script;
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output,
              "Error: QelTools::Common::Singleton<class VoktErrorHandler>::Singleton: we already "
              "have an instance\n");
    EXPECT_TRUE(script.journal.empty());
}

TEST(ToolDriver, TheProgramsNameIsPrintedByteForByte) {
    Script script;
    testing::internal::CaptureStdout();
    {
        RecordingTool tool(script);
        const char* const words[] = {"/opt/b\xE4ker %s"};
        tool.Run(1, words);
        EXPECT_EQ(tool.GetArguments(), Journal{"/opt/b\xE4ker %s"});
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout().rfind(
                  "QEL SDK version 1.28.3: /opt/b\xE4ker %s\n", 0),
              0u);
}

}  // namespace
