#include <Platform/StandardStreams.h>

#include "Platform/SystemCalls.h"
#include "Support/StandardOutput.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

bool IsNullDevice(int descriptor) {
    struct stat open {};
    struct stat null {};
    return fstat(descriptor, &open) == 0 && stat("/dev/null", &null) == 0 &&
           open.st_rdev == null.st_rdev;
}

/// The checks run in a process of their own, for they change what every other test stands on.
void ExitAfter(bool (*check)()) {
    std::_Exit(check() ? 0 : 1);
}

TEST(StandardStreamsDeathTest, WritingIntoABrokenPipeIsAnOrdinaryError) {
    EXPECT_EXIT(ExitAfter([] {
                    signal(SIGPIPE, SIG_DFL);
                    Platform::PrepareStandardStreams();
                    int ends[2];
                    if (pipe(ends) != 0) return false;
                    close(ends[0]);
                    return write(ends[1], "x", 1) == -1 && Platform::IsReaderGone(errno) &&
                           !Platform::IsReaderGone(EBADF);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, TheEndOfAChildCanBeWaitedFor) {
    EXPECT_EXIT(ExitAfter([] {
                    signal(SIGCHLD, SIG_IGN);
                    Platform::PrepareStandardStreams();
                    const pid_t child = fork();
                    if (child == 0) _exit(7);
                    int status = 0;
                    return waitpid(child, &status, 0) == child && WEXITSTATUS(status) == 7;
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, WhatIsToldWhenAFileIsClosedIsAskedFor) {
    const TemporaryFolder folder;
    const int file = OpenForWriting(folder.Path("out"));
    const StandardOutput output(file);
    CloseDescriptor(file);
    SystemCalls calls;
    int closed = -1;
    EXPECT_EQ(Platform::LateErrorOfStandardOutput(), 0);
    calls.inFrontOfClosing = [&closed](int descriptor) {
        closed = descriptor;
        return EDQUOT;
    };
    EXPECT_EQ(Platform::LateErrorOfStandardOutput(), EDQUOT);
    EXPECT_GT(closed, STDERR_FILENO);
    calls.inFrontOfClosing = [](int) { return EINTR; };
    EXPECT_EQ(Platform::LateErrorOfStandardOutput(), 0);
    calls.inFrontOfClosing = {};
}

TEST(StandardStreamsDeathTest, WritingBeyondTheSizeLimitIsAnOrdinaryError) {
    EXPECT_EXIT(ExitAfter([] {
                    signal(SIGXFSZ, SIG_DFL);
                    Platform::PrepareStandardStreams();
                    const rlimit none{};
                    std::FILE* const file = std::tmpfile();
                    if (file == nullptr || setrlimit(RLIMIT_FSIZE, &none) != 0) return false;
                    return write(fileno(file), "x", 1) == -1 && errno == EFBIG;
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, ClosedDescriptorsAreOpenedOnTheNullDevice) {
    EXPECT_EXIT(ExitAfter([] {
                    for (int descriptor = 0; descriptor < 3; ++descriptor) close(descriptor);
                    Platform::PrepareStandardStreams();
                    return IsNullDevice(0) && IsNullDevice(1) && IsNullDevice(2);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, WhatIsWrittenToAClosedStandardOutputIsRefused) {
    EXPECT_EXIT(ExitAfter([] {
                    close(STDOUT_FILENO);
                    close(STDERR_FILENO);
                    Platform::PrepareStandardStreams();
                    return write(1, "x", 1) == -1 && errno == EBADF && write(2, "x", 1) == 1;
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, OpenDescriptorsStayAsTheyAre) {
    EXPECT_EXIT(ExitAfter([] {
                    int ends[2];
                    if (pipe(ends) != 0) return false;
                    dup2(ends[1], STDOUT_FILENO);
                    close(STDIN_FILENO);
                    Platform::PrepareStandardStreams();
                    return !IsNullDevice(1) && IsNullDevice(0);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, StandardOutputGoesOutLineByLine) {
    EXPECT_EXIT(ExitAfter([] {
                    int ends[2];
                    if (pipe(ends) != 0) return false;
                    dup2(ends[1], STDOUT_FILENO);
                    Platform::PrepareStandardStreams();
                    std::printf("line\nrest");
                    char text[16] = "";
                    return read(ends[0], text, sizeof text - 1) == 5 &&
                           std::string(text) == "line\n";
                }),
                testing::ExitedWithCode(0), "");
}

}  // namespace
