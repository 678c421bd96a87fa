#include "EndingSignals_posix.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

const int kEnding[] = {SIGINT,  SIGTERM,   SIGHUP,  SIGQUIT, SIGXCPU, SIGALRM,  SIGUSR1,
                       SIGUSR2, SIGVTALRM, SIGPROF, SIGABRT, SIGIO,   SIGRTMIN, SIGRTMAX};

/// Runs `work` in a child process and gives the number of the signal that ended it; 0 when none
/// did.
template <class Work>
int EndingSignalOf(Work work) {
    const pid_t child = fork();
    if (child == 0) {
        for (const int number : kEnding) signal(number, SIG_DFL);
        // Some of them else leave a file with the process's memory.
        const rlimit none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

TEST(EndingSignals, TheNamedFilesAreGoneAndTheProcessEndsByTheSignal) {
    for (const int number : kEnding) {
        const TemporaryFolder folder;
        folder.WriteFile("one", "");
        folder.WriteFile("two", "");
        folder.WriteFile("other", "");
        EXPECT_EQ(EndingSignalOf([&] {
                      const Platform::RemoveOnSignal one(folder.Path("one"));
                      const Platform::RemoveOnSignal two(folder.Path("two"));
                      raise(number);
                  }),
                  number);
        EXPECT_FALSE(fs::exists(folder.Path("one")));
        EXPECT_FALSE(fs::exists(folder.Path("two")));
        EXPECT_TRUE(fs::exists(folder.Path("other")));
    }
}

TEST(EndingSignals, NoOtherSignalComesWhileTheFilesAreRemoved) {
    EXPECT_EQ(EndingSignalOf([] {
                  const Platform::RemoveOnSignal one("none");
                  struct sigaction action {};
                  sigaction(SIGTERM, nullptr, &action);
                  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGALRM})
                      if (sigismember(&action.sa_mask, number) != 1) raise(SIGABRT);
              }),
              0);
}

TEST(EndingSignals, AFileWhoseObjectIsGoneStays) {
    const TemporaryFolder folder;
    folder.WriteFile("one", "");
    EXPECT_EQ(EndingSignalOf([&] {
                  { const Platform::RemoveOnSignal one(folder.Path("one")); }
                  raise(SIGTERM);
              }),
              SIGTERM);
    EXPECT_TRUE(fs::exists(folder.Path("one")));
}

TEST(EndingSignals, AnIgnoredSignalStaysIgnored) {
    const TemporaryFolder folder;
    folder.WriteFile("one", "");
    EXPECT_EQ(EndingSignalOf([&] {
                  signal(SIGHUP, SIG_IGN);
                  const Platform::RemoveOnSignal one(folder.Path("one"));
                  raise(SIGHUP);
              }),
              0);
    EXPECT_TRUE(fs::exists(folder.Path("one")));
}

TEST(EndingSignals, ADeferredSignalComesBehind) {
    for (const int number : kEnding) {
        const TemporaryFolder folder;
        EXPECT_EQ(EndingSignalOf([&] {
                      const Platform::DeferSignals untilWritten;
                      raise(number);
                      folder.WriteFile("whole", "");
                  }),
                  number);
        EXPECT_TRUE(fs::exists(folder.Path("whole")));
    }
}

}  // namespace
