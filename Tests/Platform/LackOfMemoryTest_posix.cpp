#include <Platform/LackOfMemory.h>
#include <Platform/OutputCapture.h>

#include "EndingSignals_posix.h"
#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <filesystem>
#include <new>
#include <stdexcept>

namespace {

using Platform::StandardStream;

class LackOfMemory : public testing::Test {
  protected:
    /// The status of a child process that ends so; below 0 the signal.
    template <class End>
    int StatusOf(StandardStream stream, End end) const {
        const pid_t child = fork();
        if (child == 0) {
            const int printed = open(folder.Path("printed").c_str(), O_RDWR | O_CREAT, 0600);
            dup2(printed, stream == StandardStream::kOutput ? STDOUT_FILENO : STDERR_FILENO);
            const rlimit noCore{};
            setrlimit(RLIMIT_CORE, &noCore);
            const Platform::EndWhereMemoryDoes ending(stream, "the words\n");
            [&]() noexcept { end(); }();
            _exit(99);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    }

    const TemporaryFolder folder;
};

TEST_F(LackOfMemory, NoExceptionAtAllIsOne) {
    folder.WriteFile("unfinished", "");
    const auto end = [this] {
        const Platform::RemoveOnSignal unfinished(folder.Path("unfinished"));
        std::terminate();
    };
    EXPECT_EQ(StatusOf(StandardStream::kErrors, end), 1);
    EXPECT_EQ(folder.ReadFile("printed"), "the words\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("unfinished")));
}

TEST_F(LackOfMemory, AnExceptionThatSaysSoIsOne) {
    EXPECT_EQ(StatusOf(StandardStream::kErrors, [] { throw std::bad_array_new_length(); }), 1);
    EXPECT_EQ(folder.ReadFile("printed"), "the words\n");
}

TEST_F(LackOfMemory, AnyOtherExceptionEndsAsEver) {
    const auto end = [] {
        // Another of the same changes nothing.
        const Platform::EndWhereMemoryDoes again(StandardStream::kErrors, "the words\n");
        throw std::runtime_error("what it says");
    };
    EXPECT_EQ(StatusOf(StandardStream::kErrors, end), -SIGABRT);
    const std::string printed = folder.ReadFile("printed");
    EXPECT_EQ(printed.find("the words"), std::string::npos);
    EXPECT_NE(printed.find("what it says"), std::string::npos);
}

TEST_F(LackOfMemory, TheWordsPassAStandardOutputThatIsCaptured) {
    const auto end = [this] {
        Platform::OutputCapture capture;
        static_cast<void>(capture.Start(folder.Path("log")));
        std::terminate();
    };
    EXPECT_EQ(StatusOf(StandardStream::kOutput, end), 1);
    EXPECT_EQ(folder.ReadFile("printed"), "the words\n");
}

TEST_F(LackOfMemory, NobodyNeedsToHearTheWords) {
    const auto end = [] {
        int ends[2];
        if (pipe(ends) != 0) _exit(98);
        close(ends[0]);
        dup2(ends[1], STDERR_FILENO);
        signal(SIGPIPE, SIG_DFL);
        std::terminate();
    };
    EXPECT_EQ(StatusOf(StandardStream::kErrors, end), 1);
}

}  // namespace
