#pragma once

#include <Platform/OutputCapture.h>

#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <thread>

// Runs of a capture that tests of one system and of all make.

/// Lines by both ways of writing, in front of the capture, in it and behind it, reach a standard
/// output `file` of the name "out" and the log, ended as the output ends them.
inline void ExpectLinesInBoth(const TemporaryFolder& folder, int file, const std::string& end) {
    {
        const StandardOutput output(file);
        Platform::OutputCapture capture;
        std::printf("before\n");
        ASSERT_EQ(capture.Start(folder.Path("log")),
                  Platform::OutputCapture::StartResult::kStarted);
        std::printf("by stdio\n");
        std::cout << "by stream\n";
        EXPECT_TRUE(capture.Stop());
        std::printf("behind\n");
    }
    CloseDescriptor(file);
    const std::string captured = "by stdio" + end + "by stream" + end;
    EXPECT_EQ(folder.ReadFile("log"), captured);
    EXPECT_EQ(folder.ReadFile("out"), "before" + end + captured + "behind" + end);
}

/// What is said of the log "log" in `folder` that `disturb` does something to between two lines.
template <class Disturb>
std::string FaultOfLog(const TemporaryFolder& folder, Disturb disturb) {
    const int file = OpenForWriting(folder.Path("out"));
    Platform::OutputCapture capture;
    {
        const StandardOutput output(file);
        EXPECT_EQ(capture.Start(folder.Path("log")),
                  Platform::OutputCapture::StartResult::kStarted);
        std::cout << "a line" << std::endl;
        for (int i = 0; i < 5000 && folder.ReadFile("log").empty(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        disturb();
        std::cout << "another" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(file);
    EXPECT_EQ(folder.ReadFile("out"), "a line\nanother\n");
    return capture.GetLogFault();
}

/// The log is whole although a standard output `descriptor` takes nothing.
inline void ExpectWholeLogBehind(int descriptor) {
    const TemporaryFolder folder;
    {
        const StandardOutput output(descriptor);
        std::printf("refused\n");
        std::cout << "refused too\n";
        Platform::OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")),
                  Platform::OutputCapture::StartResult::kStarted);
        for (int i = 0; i < 30000; ++i) std::cout << "a line\n";
        std::cout << "last" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    CloseDescriptor(descriptor);
    const std::string log = folder.ReadFile("log");
    EXPECT_EQ(log.size(), 30000u * 7 + 5);
    EXPECT_EQ(log.rfind("a line\n", 0), 0u);
    EXPECT_EQ(log.substr(log.size() - 12), "a line\nlast\n");
}

/// A reader who begins late gets everything, and so does the log. `prepare` is called with standard
/// output at the pipe.
template <class Prepare>
void ExpectAllBySlowReader(Prepare prepare) {
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
        prepare();
        CloseDescriptor(pipe.writeEnd);
        Platform::OutputCapture capture;
        EXPECT_EQ(capture.Start(folder.Path("log")),
                  Platform::OutputCapture::StartResult::kStarted);
        std::cout << text << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    reader.join();
    CloseDescriptor(pipe.readEnd);
    EXPECT_EQ(seen, text + "\n");
    EXPECT_EQ(folder.ReadFile("log"), text + "\n");
}
