#include <Platform/OutputCapture.h>

#include "Platform/CaptureRuns.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <set>
#include <string>

namespace {

using Platform::OutputCapture;
using Result = OutputCapture::StartResult;

TEST(OutputCapture, BothGetWhatIsWrittenWhileItRuns) {
    const TemporaryFolder folder;
    ExpectLinesInBoth(folder, OpenForWriting(folder.Path("out")), "\n");
}

TEST(OutputCapture, ManyBytesArriveWhole) {
    const TemporaryFolder folder;
    std::string text;
    for (int i = 0; text.size() < 1000000; ++i) text += std::to_string(i) + "\n";
    const int file = OpenForWriting(folder.Path("out"));
    {
        const StandardOutput output(file);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << text;
    }
    CloseDescriptor(file);
    EXPECT_EQ(folder.ReadFile("log"), text);
    EXPECT_EQ(folder.ReadFile("out"), text);
}

TEST(OutputCapture, AnOldLogIsReplaced) {
    const TemporaryFolder folder;
    folder.WriteFile("log", "what an earlier run left");
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(folder.ReadFile("log"), "");
    EXPECT_EQ(capture.GetLogFault(), "");
}

TEST(OutputCapture, ALogThatCannotBeOpenedChangesNothing) {
    const TemporaryFolder folder;
    const std::set<int> descriptors = OpenDescriptors();
    OutputCapture capture;
    EXPECT_EQ(capture.Start(folder.Path("no/such/folder/log")), Result::kLogNotOpened);
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(OutputCapture, NoDescriptorIsLeftBehindAndChildrenInheritNone) {
    const TemporaryFolder folder;
    const std::set<int> before = OpenDescriptors();
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    const std::set<int> during = OpenDescriptors();
    EXPECT_GT(during.size(), before.size());
    for (const int descriptor : during)
        EXPECT_TRUE(before.count(descriptor) != 0 || !IsInherited(descriptor));
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(OutputCapture, AWholeLogHasNoFault) {
    const TemporaryFolder folder;
    EXPECT_EQ(FaultOfLog(folder, [] {}), "");
    EXPECT_EQ(folder.ReadFile("log"), "a line\nanother\n");
}

TEST(OutputCapture, ALogThatHoldsSomethingElseIsTold) {
    const TemporaryFolder folder;
    const auto write = [&](std::ios::openmode how, const char* text) {
        std::ofstream other(folder.Path("log"), how | std::ios::binary);
        EXPECT_TRUE((other << text).flush());
    };
    constexpr std::ios::openmode kKeep = std::ios::in | std::ios::out;
    constexpr std::ios::openmode kEmpty = std::ios::out | std::ios::trunc;
    const std::string fault = "something else was written into it";
    EXPECT_EQ(FaultOfLog(folder, [&] { write(kKeep, "A"); }), fault);
    EXPECT_EQ(FaultOfLog(folder, [&] { write(kEmpty, "a line\n"); }), "");
    EXPECT_EQ(FaultOfLog(folder, [&] { write(kKeep, "a line\nand a longer one\n"); }), fault);
    EXPECT_EQ(FaultOfLog(folder, [&] { write(kEmpty, "b"); }), fault);
}

TEST(OutputCapture, AFileThatIsPrintedIntoIsNoLogAndStays) {
    for (const int printed : {1, 2}) {
        const TemporaryFolder folder;
        const int kept = Duplicate(printed);
        const int file = OpenForWriting(folder.Path("log"));
        std::cout << std::flush;
        Duplicate(file, printed);
        EXPECT_TRUE(WriteText(printed, "earlier\n"));
        OutputCapture capture;
        const Result result = capture.Start(folder.Path("log"));
        Duplicate(kept, printed);
        CloseDescriptor(kept);
        CloseDescriptor(file);
        EXPECT_EQ(result, Result::kLogNotOpened);
        EXPECT_EQ(folder.ReadFile("log"), "earlier\n");
    }
}

TEST(OutputCapture, ADeviceHoldsNothingToLookAt) {
    OutputCapture capture;
    ASSERT_EQ(capture.Start(kNullDevice), Result::kStarted);
    std::cout << "a line" << std::endl;
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(capture.GetLogFault(), "");
}

TEST(OutputCapture, APartThatNeverCameToTheLogIsTold) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"));
    OutputCapture capture;
    {
        const StandardOutput output(file);
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        const int readable = OpenForReading(kNullDevice);
        Duplicate(readable, StandardOutput::kDescriptor);
        CloseDescriptor(readable);
        std::cout << "another" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(file);
    EXPECT_EQ(capture.GetLogFault(), "a part of the output never came there");
    EXPECT_EQ(folder.ReadFile("log"), "a line\n");
}

TEST(OutputCapture, ABrokenStandardOutputLeavesTheLogWhole) {
    const Pipe pipe = OpenPipe();
    CloseDescriptor(pipe.readEnd);
    ExpectWholeLogBehind(pipe.writeEnd);
}

TEST(OutputCapture, NothingIsLostToASlowReader) {
    ExpectAllBySlowReader([] {});
}

}  // namespace
