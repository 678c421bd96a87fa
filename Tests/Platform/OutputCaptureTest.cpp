#include <Platform/OutputCapture.h>

#include "Platform/FaultOfLog.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <set>
#include <thread>

namespace {

using Platform::OutputCapture;
using Result = OutputCapture::StartResult;

TEST(OutputCapture, BothGetWhatIsWrittenWhileItRuns) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"));
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
    EXPECT_EQ(folder.ReadFile("log"), "by stdio\nby stream\n");
    EXPECT_EQ(folder.ReadFile("out"), "before\nby stdio\nby stream\nbehind\n");
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

TEST(OutputCapture, AFileThatIsLogAndStandardOutputIsNoWholeLog) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("log"));
    OutputCapture capture;
    {
        const StandardOutput output(file);
        std::cout << "a banner" << std::endl;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(file);
    EXPECT_EQ(capture.GetLogFault(), "something else was written into it");
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
    const TemporaryFolder folder;
    const Pipe pipe = OpenPipe();
    CloseDescriptor(pipe.readEnd);
    {
        const StandardOutput output(pipe.writeEnd);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        for (int i = 0; i < 30000; ++i) std::cout << "a line\n";
        std::cout << "last" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(pipe.writeEnd);
    const std::string log = folder.ReadFile("log");
    EXPECT_EQ(log.size(), 30000u * 7 + 5);
    EXPECT_EQ(log.rfind("a line\n", 0), 0u);
    EXPECT_EQ(log.substr(log.size() - 12), "a line\nlast\n");
}

TEST(OutputCapture, NothingIsLostToASlowReader) {
    const TemporaryFolder folder;
    const Pipe pipe = OpenPipe();
    std::string seen;
    std::thread reader([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        seen = ReadToEnd(pipe.readEnd);
    });
    const std::string text(90000, 'x');
    {
        const StandardOutput output(pipe.writeEnd);
        CloseDescriptor(pipe.writeEnd);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << text << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    reader.join();
    CloseDescriptor(pipe.readEnd);
    EXPECT_EQ(seen, text + "\n");
    EXPECT_EQ(folder.ReadFile("log"), text + "\n");
}

}  // namespace
