#include <Platform/OutputCapture.h>

#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>

#include <chrono>
#include <cstdio>
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
    {
        const StandardOutput output(file);
        OutputCapture capture;
        std::printf("before\n");
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::printf("by stdio\n");
        std::cout << "by stream\n";
        EXPECT_TRUE(capture.Stop());
        std::printf("behind\n");
    }
    CloseDescriptor(file);
    EXPECT_EQ(folder.ReadFile("log"), "by stdio\r\nby stream\r\n");
    EXPECT_EQ(folder.ReadFile("out"), "before\r\nby stdio\r\nby stream\r\nbehind\r\n");
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
