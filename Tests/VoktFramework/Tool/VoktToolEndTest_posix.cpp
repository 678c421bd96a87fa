#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"
#include "VoktFramework/RecordingTool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <stdexcept>

namespace {

using Step = Script::Step;

TEST(ToolEnd, AFullStandardOutputChangesNeitherStagesNorStatus) {
    const TemporaryFolder folder;
    std::FILE* const full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    Script script;
    script.components = {"a", "b"};
    script.actions["a.Process"] = [](const Step&) { std::cout << "a line" << std::endl; };
    Script logged = script;
    Script failing = script;
    failing.actions["b.Process"] = [](const Step&) { throw std::runtime_error("text"); };
    int status = -1;
    int loggedStatus = -1;
    int failingStatus = -1;
    {
        const StandardOutput output(fileno(full));
        status = PlayForStatus(script, {"-tt", "1"});
        failingStatus = PlayForStatus(failing, {"-tt", "0"});
        loggedStatus = PlayForStatus(logged, {"-log", folder.Path("log")});
    }
    std::fclose(full);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(loggedStatus, 0);
    EXPECT_EQ(failingStatus, 1);
    EXPECT_EQ(script.journal, logged.journal);
    EXPECT_EQ(std::count_if(script.journal.begin(), script.journal.end(),
                            [](const std::string& step) { return step.ends_with(".destructor"); }),
              2);
    EXPECT_EQ(folder.ReadFile("log"), "a line\n");
}

}  // namespace
