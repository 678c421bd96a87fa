#include <Platform/OutputCapture.h>

#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <set>
#include <thread>

namespace {

using Platform::OutputCapture;
using Result = OutputCapture::StartResult;

/// Makes another descriptor standard output while it lives. The descriptor stays the caller's.
class StandardOutput {
  public:
    explicit StandardOutput(int descriptor) {
        Flush();
        saved = _dup(1);
        _dup2(descriptor, 1);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;
    ~StandardOutput() {
        Flush();
        _dup2(saved, 1);
        _close(saved);
        std::clearerr(stdout);
        std::cout.clear();
    }

  private:
    static void Flush() {
        std::cout.flush();
        std::fflush(stdout);
    }

    int saved = -1;
};

int OpenForWriting(const std::string& path, int mode) {
    return _open(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | mode, _S_IREAD | _S_IWRITE);
}

std::set<int> OpenDescriptors() {
    std::set<int> open;
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (_get_osfhandle(descriptor) != -1) open.insert(descriptor);
    return open;
}

TEST(OutputCapture, BothGetWhatIsWrittenWhileItRunsWithTheLineEndsOfText) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"), _O_TEXT);
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
    _close(file);
    EXPECT_EQ(folder.ReadFile("log"), "by stdio\r\nby stream\r\n");
    EXPECT_EQ(folder.ReadFile("out"), "before\r\nby stdio\r\nby stream\r\nbehind\r\n");
}

TEST(OutputCapture, AnOutputOfBytesStaysOne) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"), _O_BINARY);
    {
        const StandardOutput output(file);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "line\n";
        EXPECT_TRUE(capture.Stop());
        std::printf("behind\n");
    }
    _close(file);
    EXPECT_EQ(folder.ReadFile("log"), "line\n");
    EXPECT_EQ(folder.ReadFile("out"), "line\nbehind\n");
}

TEST(OutputCapture, ManyBytesArriveWhole) {
    const TemporaryFolder folder;
    std::string text;
    for (int i = 0; text.size() < 1000000; ++i) text += std::to_string(i) + "\n";
    const int file = OpenForWriting(folder.Path("out"), _O_BINARY);
    {
        const StandardOutput output(file);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << text;
    }
    _close(file);
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

TEST(OutputCapture, AFurtherStreamOfAFileIsNoLog) {
    const TemporaryFolder folder;
    OutputCapture capture;
    EXPECT_EQ(capture.Start(folder.Path("log:x")), Result::kLogNotOpened);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("log")));
}

/// The fault of a log of "a line" into which something else comes in the place of `position`.
std::string FaultOfLogWith(const std::string& text, LONG position) {
    const TemporaryFolder folder;
    OutputCapture capture;
    EXPECT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    std::cout << "a line" << std::endl;
    for (int i = 0; i < 5000 && folder.ReadFile("log").empty(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const HANDLE other =
        CreateFileA(folder.Path("log").c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    SetFilePointer(other, position, nullptr, FILE_BEGIN);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(other, text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
    CloseHandle(other);
    EXPECT_TRUE(capture.Stop());
    return capture.GetLogFault();
}

TEST(OutputCapture, ALogThatHoldsSomethingElseIsTold) {
    const std::string fault = "something else was written into it";
    EXPECT_EQ(FaultOfLogWith("a l", 0), "");
    EXPECT_EQ(FaultOfLogWith("b", 0), fault);
    EXPECT_EQ(FaultOfLogWith("more", 100), fault);
}

TEST(OutputCapture, AFileThatIsLogAndStandardOutputIsNoWholeLog) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("log"), _O_TEXT);
    OutputCapture capture;
    {
        const StandardOutput output(file);
        std::cout << "a banner" << std::endl;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    _close(file);
    EXPECT_EQ(capture.GetLogFault(), "something else was written into it");
}

TEST(OutputCapture, ADeviceHoldsNothingToLookAt) {
    OutputCapture capture;
    ASSERT_EQ(capture.Start("NUL"), Result::kStarted);
    std::cout << "a line" << std::endl;
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(capture.GetLogFault(), "");
}

TEST(OutputCapture, WhatIsRefusedOnItsWayToTheLogIsTold) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"), _O_TEXT);
    OutputCapture capture;
    {
        const StandardOutput output(file);
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << "a line" << std::endl;
        const int readable = _open("NUL", _O_RDONLY);
        _dup2(readable, 1);
        _close(readable);
        std::cout << "another" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    _close(file);
    EXPECT_EQ(folder.ReadFile("log"), "a line\r\n");
    EXPECT_EQ(capture.GetLogFault(), "a part of the output never came there");
}

TEST(OutputCapture, NoDescriptorIsLeftBehindAndChildrenInheritNone) {
    const TemporaryFolder folder;
    const std::set<int> before = OpenDescriptors();
    OutputCapture capture;
    ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
    const std::set<int> during = OpenDescriptors();
    EXPECT_GT(during.size(), before.size());
    for (const int descriptor : during) {
        DWORD flags = 0;
        GetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)), &flags);
        EXPECT_TRUE(before.count(descriptor) != 0 || (flags & HANDLE_FLAG_INHERIT) == 0);
    }
    EXPECT_TRUE(capture.Stop());
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(OutputCapture, ABrokenStandardOutputLeavesTheLogWhole) {
    const TemporaryFolder folder;
    int ends[2];
    ASSERT_EQ(_pipe(ends, 1024, _O_BINARY), 0);
    _close(ends[0]);
    {
        const StandardOutput output(ends[1]);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        for (int i = 0; i < 3000; ++i) std::cout << "a line\n";
        std::cout << "last" << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    _close(ends[1]);
    const std::string log = folder.ReadFile("log");
    EXPECT_EQ(log.size(), 3000u * 7 + 5);
    EXPECT_EQ(log.substr(log.size() - 12), "a line\nlast\n");
}

std::string ReadToEnd(int descriptor) {
    std::string text;
    char buffer[4096];
    for (int count; (count = _read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

TEST(OutputCapture, NothingIsLostToASlowReader) {
    const TemporaryFolder folder;
    int ends[2];
    ASSERT_EQ(_pipe(ends, 1024, _O_BINARY), 0);
    std::string seen;
    std::thread reader([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        seen = ReadToEnd(ends[0]);
    });
    const std::string text(90000, 'x');
    {
        const StandardOutput output(ends[1]);
        _close(ends[1]);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        std::cout << text << std::endl;
        EXPECT_TRUE(capture.Stop());
    }
    reader.join();
    _close(ends[0]);
    EXPECT_EQ(seen, text + "\n");
    EXPECT_EQ(folder.ReadFile("log"), text + "\n");
}

TEST(OutputCapture, TheWaitForAReaderThatNeverReadsIsBounded) {
    const TemporaryFolder folder;
    int ends[2];
    ASSERT_EQ(_pipe(ends, 1024, _O_BINARY), 0);
    {
        const StandardOutput output(ends[1]);
        OutputCapture capture;
        ASSERT_EQ(capture.Start(folder.Path("log")), Result::kStarted);
        // More than one pipe takes, and less than both.
        std::cout << std::string(1500, 'x') << std::flush;
        EXPECT_FALSE(capture.Stop(std::chrono::milliseconds(200)));
        EXPECT_TRUE(capture.Stop());
    }
    _close(ends[1]);
    EXPECT_LT(ReadToEnd(ends[0]).size(), 1500u);
    _close(ends[0]);
}

}  // namespace
