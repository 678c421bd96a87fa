#include <Platform/OutputCapture.h>

#include "Platform/CaptureRuns.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>

#include <chrono>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

using Platform::OutputCapture;
using Result = OutputCapture::StartResult;

TEST(OutputCapture, BothGetWhatIsWrittenWhileItRunsWithTheLineEndsOfText) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"));
    _setmode(file, _O_TEXT);
    ExpectLinesInBoth(folder, file, "\r\n");
}

TEST(OutputCapture, AFurtherStreamOfAFileIsNoLog) {
    const TemporaryFolder folder;
    OutputCapture capture;
    EXPECT_EQ(capture.Start(folder.Path("log:x")), Result::kLogNotOpened);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("log")));
}

TEST(OutputCapture, TheWaitForAReaderThatNeverReadsIsBounded) {
    const TemporaryFolder folder;
    const Pipe pipe = OpenPipe();
    {
        const StandardOutput output(pipe.writeEnd);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        // More than one pipe takes, and less than both.
        std::cout << std::string(1500, 'x') << std::flush;
        EXPECT_FALSE(capture.Stop(std::chrono::milliseconds(200)));
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(pipe.writeEnd);
    EXPECT_LT(ReadToEnd(pipe.readEnd).size(), 1500u);
    CloseDescriptor(pipe.readEnd);
}

}  // namespace
