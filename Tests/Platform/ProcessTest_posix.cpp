#include <Platform/Process.h>

#include "Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using Platform::RunPipeline;
using Platform::StartDetached;

/// Waits for a file that another process writes under a name of its own and then renames.
std::string WaitFor(const TemporaryFolder& folder, const std::string& name) {
    for (int i = 0; i < 1000 && !std::filesystem::exists(folder.Path(name)); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return folder.ReadFile(name);
}

/// What a detached shell script leaves in the file "$0".
std::string OutputOfDetached(const std::string& script) {
    const TemporaryFolder folder;
    const std::string whole = "{ " + script + "; } > \"$0.new\"; mv \"$0.new\" \"$0\"";
    EXPECT_EQ(StartDetached({"sh", "-c", whole, folder.Path("result")}), 0);
    return WaitFor(folder, "result");
}

TEST(StartDetached, AMissingProgramIsToldAtOnce) {
    EXPECT_EQ(StartDetached({"no-such-program-anywhere"}), ENOENT);
    EXPECT_EQ(StartDetached({}), ENOENT);
}

TEST(StartDetached, TheChildHasTheNullDeviceOnItsStandardStreams) {
    EXPECT_EQ(OutputOfDetached("readlink /proc/$$/fd/0; readlink /proc/$$/fd/2"),
              "/dev/null\n/dev/null\n");
}

TEST(StartDetached, TheChildHasNoDescriptorOfOurs) {
    const int ours = open("/dev/zero", O_RDONLY);
    EXPECT_EQ(OutputOfDetached("for f in /proc/$$/fd/*; do readlink \"$f\"; done | "
                               "grep -c /dev/zero"),
              "0\n");
    close(ours);
}

TEST(StartDetached, TheChildLeadsASessionOfItsOwn) {
    EXPECT_EQ(OutputOfDetached("set -- $(cat /proc/$$/stat); test $6 = $$ && echo own"), "own\n");
}

TEST(StartDetached, TheChildHasDefaultSignalActions) {
    const auto before = signal(SIGPIPE, SIG_IGN);
    const std::string ignored = OutputOfDetached("sed -n 's/SigIgn:.//p' /proc/self/status");
    // From 32 up the numbers are the C library's own.
    EXPECT_EQ(std::stoull(ignored, nullptr, 16) & 0x7FFFFFFF, 0u) << ignored;
    signal(SIGPIPE, before);
}

TEST(StartDetached, TheChildHasOurFolderAndEnvironment) {
    setenv("PLATFORM_TEST_VARIABLE", "value", 1);
    EXPECT_EQ(OutputOfDetached("pwd -P; echo $PLATFORM_TEST_VARIABLE"),
              std::filesystem::current_path().string() + "\nvalue\n");
}

TEST(RunPipeline, TheLastCommandDecides) {
    EXPECT_TRUE(RunPipeline({{"true"}}));
    EXPECT_FALSE(RunPipeline({{"false"}}));
    EXPECT_TRUE(RunPipeline({{"false"}, {"true"}}));
    EXPECT_FALSE(RunPipeline({{"true"}, {"false"}}));
}

TEST(RunPipeline, OutputGoesToTheNextCommand) {
    const TemporaryFolder folder;
    EXPECT_TRUE(RunPipeline({{"printf", "b\\na\\n"}, {"sort"}, {"tee", folder.Path("out")}}));
    EXPECT_EQ(folder.ReadFile("out"), "a\nb\n");
}

TEST(RunPipeline, NoShellReadsTheArguments) {
    const TemporaryFolder folder;
    const std::string name = folder.Path("a b;$(exit)'\"*.txt");
    EXPECT_TRUE(RunPipeline({{"touch", name}}));
    EXPECT_TRUE(std::filesystem::exists(name));
}

TEST(RunPipeline, AMissingProgramIsAFailureAndNobodyIsLeftWaiting) {
    EXPECT_FALSE(RunPipeline({{"no-such-program-anywhere"}, {"cat"}}));
    EXPECT_FALSE(RunPipeline({{"cat", "/dev/zero"}, {"no-such-program-anywhere"}}));
    EXPECT_FALSE(RunPipeline({}));
}

}  // namespace
