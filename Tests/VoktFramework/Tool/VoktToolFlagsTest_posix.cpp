#include "Platform/FewDescriptors.h"
#include "Support/TemporaryFolder.h"
#include "VoktFramework/RecordingTool.h"

#include <gtest/gtest.h>

// A limit on open files is this system's.

TEST(LogFileThread, ThatCannotBeMadeIsAnInternalError) {
    const TemporaryFolder folder;
    Script script;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int status = -1;
    {
        const FewDescriptors few(2);
        status = PlayForStatus(script, {"-log", folder.Path("run.log")});
    }
    EXPECT_EQ(status, 1);
    EXPECT_EQ(WithoutPositions(testing::internal::GetCapturedStdout()),
              kBanner + "Error: 2 An internal error occurred; failed to create log thread\n" +
                  kFailedEnd);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "\nWARNING: log file '" + folder.Path("run.log") +
                  "' cannot be copied to: Too many open files\n");
}
