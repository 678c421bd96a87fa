#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"
#include "VoktFramework/RecordingTool.h"

#include <VoktFramework/Errors/VoktError.h>
#include <VoktFramework/Saving/VoktBinaryFilename.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>
#include <stdexcept>

namespace {

using Step = Script::Step;

const std::vector<std::string> kAnyRun = {"-tt", "0"};

Script::Action Throw(const std::string& text) {
    return [text](const Step&) { throw std::runtime_error(text); };
}

std::size_t CountDestructors(const Script& script) {
    std::size_t count = 0;
    for (const std::string& step : script.journal)
        if (step.find(".destructor") != std::string::npos) ++count;
    return count;
}

TEST(ToolEnd, AFailingDestructorFailsAGoodRun) {
    Script script;
    script.actions["a.destructor"] = Throw("Error while shutting down");
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, kBanner + "Error: Error while shutting down\n");
}

TEST(ToolEnd, AFailingDestructorFailsARequestForHelp) {
    Script script;
    script.actions["a.destructor"] = Throw("text");
    EXPECT_EQ(Play(script, {}).status, 1);
}

TEST(ToolEnd, TheOtherComponentsStillEndAndTheFirstFailureIsReported) {
    Script script;
    script.components = {"a", "b", "c"};
    script.actions["a.destructor"] = Throw("first");
    script.actions["b.destructor"] = Throw("second");
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, kBanner + "Error: first\n");
    EXPECT_EQ(CountDestructors(script), 3u);
    EXPECT_FALSE(VoktBinaryFilename::Exists());
}

TEST(ToolEnd, AFailedRunIsReportedBeforeAFailingDestructor) {
    Script script;
    script.components = {"a", "b"};
    script.actions["a.Process"] = Throw("stage");
    script.actions["a.destructor"] = Throw("destructor");
    const ProgramEnd end = Play(script, kAnyRun);
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, kBanner + "Error: 103 An error occurred during tool processing; stage\n" +
                              kFailedEnd);
    EXPECT_EQ(CountDestructors(script), 2u);
}

TEST(ToolEnd, AComponentThatFailsWhileItIsAddedLeavesTheOthersToEnd) {
    Script script;
    script.components = {"a", "b"};
    script.actions["b.constructor"] = Throw("text");
    EXPECT_EQ(Play(script, kAnyRun).status, 1);
    EXPECT_EQ(script.journal.back(), "a.destructor");
    EXPECT_EQ(CountDestructors(script), 1u);
}

TEST(ToolEnd, TheLogIsWholeWhenADestructorFails) {
    const TemporaryFolder folder;
    Script script;
    script.actions["a.Process"] = [](const Step&) { std::cout << "a line" << std::endl; };
    script.actions["a.destructor"] = Throw("text");
    const ProgramEnd end = Play(script, {"-log", folder.Path("log")});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, kBanner + "a line\nError: text\n");
    EXPECT_EQ(WithLineFeeds(folder.ReadFile("log")), "a line\n");
}

}  // namespace
