#include <Platform/StandardStreams.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

/// The checks run in a process of their own, for they change what every other test stands on.
void ExitAfter(bool (*check)()) {
    std::_Exit(check() ? 0 : 1);
}

TEST(StandardStreamsDeathTest, WritingIntoABrokenPipeIsAnOrdinaryError) {
    EXPECT_EXIT(ExitAfter([] {
                    Platform::PrepareStandardStreams();
                    int ends[2];
                    if (_pipe(ends, 1024, _O_BINARY) != 0) return false;
                    _close(ends[0]);
                    return _write(ends[1], "x", 1) == -1 && Platform::IsReaderGone(errno) &&
                           _write(77, "x", 1) == -1 && !Platform::IsReaderGone(errno);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, NoFailureOpensAWindow) {
    EXPECT_EXIT(ExitAfter([] {
                    SetErrorMode(SEM_NOOPENFILEERRORBOX);
                    Platform::PrepareStandardStreams();
                    return GetErrorMode() == (SEM_NOOPENFILEERRORBOX | SEM_FAILCRITICALERRORS |
                                              SEM_NOGPFAULTERRORBOX);
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, AReaderIsGoneInSeveralWays) {
    for (const DWORD own : {ERROR_NO_DATA, ERROR_PIPE_NOT_CONNECTED, ERROR_BROKEN_PIPE}) {
        _doserrno = own;
        EXPECT_TRUE(Platform::IsReaderGone(EINVAL)) << own;
    }
    _doserrno = ERROR_INVALID_PARAMETER;
    EXPECT_FALSE(Platform::IsReaderGone(EINVAL));
    EXPECT_FALSE(Platform::IsReaderGone(ENOSPC));
}

TEST(StandardStreamsDeathTest, AConsoleTakesTheLettersOfNamesUntilTheEnd) {
    DWORD mode = 0;
    if (!GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode))
        GTEST_SKIP() << "needs a console; Tests/Windows/console runs it at one";
    constexpr UINT kOtherLetters = 850;
    ASSERT_TRUE(SetConsoleOutputCP(kOtherLetters));
    // The process that is to die has this console for its standard output as well.
    EXPECT_EXIT(
        {
            Platform::PrepareStandardStreams();
            std::exit(GetConsoleOutputCP() == GetACP() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(GetConsoleOutputCP(), kOtherLetters);
}

TEST(StandardStreamsDeathTest, ClosedDescriptorsAreOpenedOnTheNullDevice) {
    EXPECT_EXIT(ExitAfter([] {
                    for (int descriptor = 0; descriptor < 3; ++descriptor) _close(descriptor);
                    Platform::PrepareStandardStreams();
                    char byte;
                    return _read(0, &byte, 1) == 0 && _write(1, "x", 1) == 1 &&
                           _write(2, "x", 1) == 1 && _open("NUL", _O_RDONLY) > 2;
                }),
                testing::ExitedWithCode(0), "");
}

TEST(StandardStreamsDeathTest, StandardOutputGoesOutLineByLine) {
    EXPECT_EXIT(ExitAfter([] {
                    int ends[2];
                    if (_pipe(ends, 1024, _O_BINARY) != 0) return false;
                    _dup2(ends[1], 1);
                    Platform::PrepareStandardStreams();
                    std::printf("line\n");
                    char text[16] = "";
                    return _read(ends[0], text, sizeof text - 1) == 5 &&
                           std::string(text) == "line\n";
                }),
                testing::ExitedWithCode(0), "");
}

}  // namespace
