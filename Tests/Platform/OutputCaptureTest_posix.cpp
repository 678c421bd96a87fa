#include <Platform/OutputCapture.h>

#include "Platform/FewDescriptors.h"
#include "Platform/StandardOutput.h"
#include "Platform/SystemCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Platform::OutputCapture;
using Result = OutputCapture::StartResult;

int OpenForWriting(const std::string& path) {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
}

std::set<int> OpenDescriptors() {
    std::set<int> open;
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0) open.insert(descriptor);
    return open;
}

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
    close(file);
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
    close(file);
    EXPECT_EQ(folder.ReadFile("log"), text);
    EXPECT_EQ(folder.ReadFile("out"), text);
}

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

TEST(OutputCapture, AnOldLogIsReplaced) {
    const TemporaryFolder folder;
    folder.WriteFile("log", "what an earlier run left");
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(folder.ReadFile("log"), "");
}

TEST(OutputCapture, ALogThatCannotBeOpenedChangesNothing) {
    const TemporaryFolder folder;
    const std::set<int> descriptors = OpenDescriptors();
    OutputCapture capture;
    EXPECT_EQ(capture.Start(folder.Path("no/such/folder/log")), Result::kLogNotOpened);
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(OpenDescriptors(), descriptors);
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
        close(file);
        EXPECT_EQ(folder.ReadFile("out"), "behind\n");
    }
}

TEST(OutputCapture, NoDescriptorIsLeftBehind) {
    const TemporaryFolder folder;
    const std::set<int> descriptors = OpenDescriptors();
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(OutputCapture, ChildrenInheritNothingOfIt) {
    const TemporaryFolder folder;
    const std::set<int> before = OpenDescriptors();
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    const std::set<int> during = OpenDescriptors();
    EXPECT_GT(during.size(), before.size());
    for (const int descriptor : during) {
        const bool isOurs = before.count(descriptor) == 0;
        EXPECT_TRUE(!isOurs || (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0);
    }
    EXPECT_TRUE(capture.Stop());
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
    close(file);
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

/// What is said of a log that `disturb` does something to between two lines.
template <class Disturb>
std::string FaultOfLog(const TemporaryFolder& folder, Disturb disturb) {
    const int file = OpenForWriting(folder.Path("out"));
    OutputCapture capture;
    {
        const StandardOutput output(file);
        EXPECT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        for (int i = 0; i < 5000 && folder.ReadFile("log").empty(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        disturb();
        std::cout << "another" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    close(file);
    EXPECT_EQ(folder.ReadFile("out"), "a line\nanother\n");
    return capture.GetLogFault();
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

TEST(OutputCapture, ALogThatHoldsSomethingElseIsTold) {
    const TemporaryFolder folder;
    const auto write = [&](int how, const char* text) {
        const int other = open(folder.Path("log").c_str(), O_WRONLY | how);
        EXPECT_GT(::write(other, text, std::strlen(text)), 0);
        close(other);
    };
    const std::string fault = "something else was written into it";
    EXPECT_EQ(FaultOfLog(folder, [&] { write(0, "A"); }), fault);
    EXPECT_EQ(FaultOfLog(folder, [&] { write(O_TRUNC, "a line\n"); }), "");
    EXPECT_EQ(FaultOfLog(folder, [&] { write(0, "a line\nand a longer one\n"); }), fault);
    EXPECT_EQ(FaultOfLog(folder, [&] { write(O_TRUNC, "b"); }), fault);
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
    close(file);
    EXPECT_EQ(capture.GetLogFault(), "something else was written into it");
}

TEST(OutputCapture, ADeviceHoldsNothingToLookAt) {
    OutputCapture capture;
    ASSERT_EQ(capture.Start("/dev/null"), Result::kStarted);
    std::cout << "a line" << std::endl;
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(capture.GetLogFault(), "");
}

TEST(OutputCapture, AWholeLogHasNoFault) {
    const TemporaryFolder folder;
    EXPECT_EQ(FaultOfLog(folder, [] {}), "");
    EXPECT_EQ(folder.ReadFile("log"), "a line\nanother\n");
}

TEST(OutputCapture, APartThatNeverCameToTheLogIsTold) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"));
    OutputCapture capture;
    {
        const StandardOutput output(file);
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        const int full = open("/dev/full", O_WRONLY);
        dup2(full, STDOUT_FILENO);
        close(full);
        std::cout << "another" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    close(file);
    EXPECT_EQ(capture.GetLogFault(), "a part of the output never came there");
    EXPECT_EQ(folder.ReadFile("log"), "a line\n");
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
    close(file);
    EXPECT_EQ(folder.ReadFile("log"), "a line\n");
    EXPECT_EQ(folder.ReadFile("out"), "a line\nbehind\n");
}

TEST(OutputCapture, AFullStandardOutputLeavesTheLogWhole) {
    const TemporaryFolder folder;
    const int full = open("/dev/full", O_WRONLY);
    {
        const StandardOutput output(full);
        std::printf("refused\n");
        std::cout << "refused too\n";
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        for (int i = 0; i < 30000; ++i) std::cout << "a line\n";
        std::cout << "last" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    close(full);
    const std::string log = folder.ReadFile("log");
    EXPECT_EQ(log.size(), 30000u * 7 + 5);
    EXPECT_EQ(log.rfind("a line\n", 0), 0u);
    EXPECT_EQ(log.substr(log.size() - 12), "a line\nlast\n");
}

TEST(OutputCapture, ABrokenStandardOutputLeavesTheLogWhole) {
    const auto before = signal(SIGPIPE, SIG_IGN);
    const TemporaryFolder folder;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    {
        const StandardOutput output(ends[1]);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    close(ends[1]);
    signal(SIGPIPE, before);
    EXPECT_EQ(folder.ReadFile("log"), "a line\n");
}

/// Reads a pipe to its end after a pause.
std::string ReadSlowly(int descriptor) {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

TEST(OutputCapture, NothingIsLostToASlowReaderBehindABusyPipe) {
    for (const int mode : {0, O_NONBLOCK}) {
        const TemporaryFolder folder;
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        std::string seen;
        std::thread reader([&] { seen = ReadSlowly(ends[0]); });
        const std::string text(90000, 'x');
        {
            const StandardOutput output(ends[1]);
            // Not to wait is a property of the pipe's end, however it came to us.
            fcntl(STDOUT_FILENO, F_SETFL, O_WRONLY | mode);
            close(ends[1]);
            OutputCapture capture;
            ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
            std::cout << text << std::endl;
            EXPECT_TRUE(capture.Stop());
        }
        reader.join();
        close(ends[0]);
        EXPECT_EQ(seen, text + "\n");
        EXPECT_EQ(folder.ReadFile("log"), text + "\n");
    }
}

TEST(OutputCapture, TheWaitForAReaderThatNeverReadsIsBounded) {
    const TemporaryFolder folder;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string text(70000, 'x');
    {
        const StandardOutput output(ends[1]);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << text << std::flush;
        EXPECT_FALSE(capture.Stop(std::chrono::milliseconds(50)));
        EXPECT_TRUE(capture.Stop());
    }
    // What is still in the pipe comes to a whole number of the thread's steps, and no more follows.
    close(ends[1]);
    std::string seen = ReadSlowly(ends[0]);
    close(ends[0]);
    EXPECT_GE(seen.size(), 65536u);
    EXPECT_LT(seen.size(), text.size());
}

}  // namespace
