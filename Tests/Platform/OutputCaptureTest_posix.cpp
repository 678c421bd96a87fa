#include <Platform/OutputCapture.h>

#include "Platform/CaptureRuns.h"
#include "Platform/FewDescriptors.h"
#include "Platform/SystemCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Platform::OutputCapture;
using Result = OutputCapture::StartResult;

TEST(OutputCapture, SignalsAreLeftToTheThreadThatStartedIt) {
    const TemporaryFolder folder;
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    // While a thread starts, everything waits; this one has when a line has passed through it.
    std::printf("line\n");
    std::fflush(stdout);
    for (int i = 0; i < 5000 && folder.ReadFile("log").empty(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const auto waiting = [](const fs::path& thread) {
        std::ifstream status(thread / "status");
        for (std::string line; std::getline(status, line);)
            if (line.starts_with("SigBlk:")) return std::stoull(line.substr(7), nullptr, 16);
        return 0ull;
    };
    constexpr unsigned long long kSignals =
        1ull << (SIGINT - 1) | 1ull << (SIGTERM - 1) | 1ull << (SIGHUP - 1);
    int deferring = 0;
    int others = 0;
    for (const fs::directory_entry& thread : fs::directory_iterator("/proc/self/task"))
        ++((waiting(thread.path()) & kSignals) == kSignals ? deferring : others);
    EXPECT_EQ(deferring, 1);
    EXPECT_GE(others, 1);
    EXPECT_TRUE(capture.Stop());
}

TEST(OutputCapture, ACaptureThatCannotStartLeavesStandardOutputAsItWas) {
    for (const int more : {1, 3}) {
        const TemporaryFolder folder;
        const int file = OpenForWriting(folder.Path("out"));
        {
            const StandardOutput output(file);
            const std::set<int> descriptors = OpenDescriptors();
            OutputCapture capture;
            {
                const FewDescriptors few(more);
                EXPECT_EQ(capture.Start(folder.Path("log")), Result::kThreadNotStarted);
            }
            EXPECT_EQ(OpenDescriptors(), descriptors);
            std::cout << "behind" << std::endl;
        }
        CloseDescriptor(file);
        EXPECT_EQ(folder.ReadFile("out"), "behind\n");
    }
}

TEST(OutputCapture, ALogThatDoesNotTakeEverythingIsTold) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"));
    OutputCapture capture;
    {
        const StandardOutput output(file);
        ASSERT_EQ(capture.Start("/dev/full"), Result::kStarted);
        std::cout << "a line" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(file);
    EXPECT_EQ(capture.GetLogFault(), "No space left on device");
    EXPECT_EQ(folder.ReadFile("out"), "a line\n");
}

TEST(OutputCapture, AFailureThatShowsWhenTheLogIsClosedIsTold) {
    const TemporaryFolder folder;
    SystemCalls calls;
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    calls.inFrontOfClosing = [](int) { return EDQUOT; };
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(capture.GetLogFault(), "Disk quota exceeded");
}

TEST(OutputCapture, WhatCannotBeReadForTheLogIsTold) {
    const TemporaryFolder folder;
    SystemCalls calls;
    int reads = 0;
    calls.inFrontOfReading = [&reads] { return ++reads == 1 ? EINTR : EIO; };
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(reads, 2);
    EXPECT_EQ(capture.GetLogFault(), "Input/output error");
}

TEST(OutputCapture, ALogWhoseNameLeadsElsewhereIsTold) {
    const TemporaryFolder folder;
    const auto rename = [&] { fs::rename(folder.Path("log"), folder.Path("log2")); };
    EXPECT_EQ(FaultOfLog(folder, rename), "it was moved or removed");
    EXPECT_EQ(folder.ReadFile("log2"), "a line\nanother\n");
    EXPECT_EQ(FaultOfLog(folder, [&] { fs::remove(folder.Path("log")); }),
              "it was moved or removed");
    const auto replace = [&] {
        rename();
        folder.WriteFile("log", "another");
    };
    EXPECT_EQ(FaultOfLog(folder, replace), "another file has taken its name");
    EXPECT_EQ(folder.ReadFile("log"), "another");
    fs::create_directory(folder.Path("inner"));
    fs::remove(folder.Path("log"));
    fs::create_symlink("inner/log", folder.Path("log"));
    EXPECT_EQ(FaultOfLog(folder, [&] { fs::rename(folder.Path("inner"), folder.Path("old")); }),
              "it was moved or removed");
}

TEST(OutputCapture, OfALogThatTheUserMayOnlyWriteTheSizeIsLookedAt) {
    const TemporaryFolder folder;
    chmod(folder.Path().c_str(), 0755);
    folder.WriteFile("log", "old");
    OutputCapture capture;
    chmod(folder.Path("log").c_str(), 0222);
    const OrdinaryUser user;
    for (const bool isLonger : {false, true}) {
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        if (isLonger) {
            const int other = open(folder.Path("log").c_str(), O_WRONLY);
            EXPECT_EQ(write(other, "more", 4), 4);
            close(other);
        }
        EXPECT_TRUE(capture.Stop());
        EXPECT_EQ(capture.GetLogFault(), isLonger ? "something else was written into it" : "");
    }
}

TEST(OutputCapture, StandardOutputComesBackWhereTheSystemDoesNotPutItInPlaceOfThePipe) {
    const TemporaryFolder folder;
    SystemCalls calls;
    const int file = OpenForWriting(folder.Path("out"));
    {
        const StandardOutput output(file);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        calls.inFrontOfDuplicating = [] { return EBUSY; };
        EXPECT_TRUE(capture.Stop());
        calls.inFrontOfDuplicating = {};
        std::cout << "behind" << std::endl;
        EXPECT_EQ(capture.GetLogFault(), "");
    }
    CloseDescriptor(file);
    EXPECT_EQ(folder.ReadFile("log"), "a line\n");
    EXPECT_EQ(folder.ReadFile("out"), "a line\nbehind\n");
}

TEST(OutputCapture, AFullStandardOutputLeavesTheLogWhole) {
    ExpectWholeLogBehind(OpenForWriting("/dev/full"));
}

TEST(OutputCapture, NothingIsLostToASlowReaderBehindABusyPipe) {
    // Not to wait is a property of the pipe's end, however it came to us.
    ExpectAllBySlowReader(
        [] { fcntl(StandardOutput::kDescriptor, F_SETFL, O_WRONLY | O_NONBLOCK); });
}

TEST(OutputCapture, TheWaitForAReaderThatNeverReadsIsBounded) {
    const TemporaryFolder folder;
    const Pipe pipe = OpenPipe();
    const std::string text(70000, 'x');
    {
        const StandardOutput output(pipe.writeEnd);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << text << std::flush;
        EXPECT_FALSE(capture.Stop(std::chrono::milliseconds(50)));
        EXPECT_TRUE(capture.Stop());
    }
    // What is still in the pipe comes to a whole number of the thread's steps, and no more follows.
    CloseDescriptor(pipe.writeEnd);
    const std::string seen = ReadToEnd(pipe.readEnd);
    CloseDescriptor(pipe.readEnd);
    EXPECT_GE(seen.size(), 65536u);
    EXPECT_LT(seen.size(), text.size());
}

}  // namespace
