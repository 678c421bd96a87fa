#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"
#include "VoktFramework/RecordingTool.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <string>

namespace {

using Step = Script::Step;

/// More than a pipe takes that nobody reads, and less than that one and the capture's own.
constexpr std::size_t kTextSize = kIsWindows ? 1500 : 70000;

TEST(ToolEnd, AReaderThatNeverReadsIsWaitedForAndThenGivenUp) {
    const TemporaryFolder folder;
    const Pipe pipe = OpenPipe();
    Script script;
    script.actions["a.Process"] = [](const Step&) {
        std::cout << std::string(kTextSize, 'x') << std::endl;
    };
    testing::internal::CaptureStderr();
    int status = -1;
    const auto begin = std::chrono::steady_clock::now();
    {
        const StandardOutput output(pipe.writeEnd);
        status = PlayForStatus(script, {"-log", folder.Path("log")});
    }
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(4900));
    CloseDescriptor(pipe.writeEnd);
    CloseDescriptor(pipe.readEnd);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "\nWARNING: timeout waiting for log file thread to exit\n");
}

}  // namespace
