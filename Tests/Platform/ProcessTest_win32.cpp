#include <Platform/Process.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using Platform::RunPipeline;
using Platform::StartDetached;

/// Waits for a file that another process writes under a name of its own and then renames.
std::string WaitFor(const TemporaryFolder& folder, const std::string& name) {
    for (int i = 0; i < 3000 && !std::filesystem::exists(folder.Path(name)); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return folder.ReadFile(name);
}

/// What a detached command leaves in its file "out".
std::string OutputOfDetached(const TemporaryFolder& folder, const std::string& command) {
    folder.WriteFile("script.bat", "@echo off\r\ncd /d \"%~dp0\"\r\n" + command +
                                       ">new.txt\r\nren new.txt out\r\n");
    EXPECT_EQ(StartDetached({"cmd", "/c", folder.Path("script.bat")}), 0);
    return WaitFor(folder, "out");
}

TEST(StartDetached, AMissingProgramIsToldAtOnce) {
    EXPECT_EQ(StartDetached({"no-such-program-anywhere.exe"}), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(StartDetached({}), ERROR_FILE_NOT_FOUND);
}

TEST(StartDetached, TheChildHasOurEnvironment) {
    const TemporaryFolder folder;
    setenv("PLATFORM_TEST_VARIABLE", "value", 1);
    EXPECT_EQ(OutputOfDetached(folder, "echo %PLATFORM_TEST_VARIABLE%"), "value\r\n");
}

/// A shell that waits, having made the file "started", until there is a file "end".
void StartWaiting(const TemporaryFolder& folder) {
    folder.WriteFile("wait.bat",
                     "@echo off\r\ncd /d \"%~dp0\"\r\necho x>started\r\n"
                     ":again\r\nif not exist end goto again\r\necho x>ended\r\n");
    EXPECT_EQ(StartDetached({"cmd", "/c", folder.Path("wait.bat")}), 0);
    WaitFor(folder, "started");
}

void EndWaiting(const TemporaryFolder& folder) {
    folder.WriteFile("end", "");
    // A folder that goes away first would leave the shell in its loop for good.
    WaitFor(folder, "ended");
}

TEST(StartDetached, WhoeverReadsOurOutputNeedNotWaitForTheChild) {
    const TemporaryFolder folder;
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    ASSERT_TRUE(CreatePipe(&reader, &writer, &inheritable, 0));
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
    SetStdHandle(STD_OUTPUT_HANDLE, writer);
    SetStdHandle(STD_ERROR_HANDLE, writer);
    StartWaiting(folder);
    SetStdHandle(STD_OUTPUT_HANDLE, output);
    SetStdHandle(STD_ERROR_HANDLE, errors);
    CloseHandle(writer);
    EXPECT_FALSE(PeekNamedPipe(reader, nullptr, 0, nullptr, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BROKEN_PIPE});
    CloseHandle(reader);
    EndWaiting(folder);
}

TEST(StartDetached, TheChildInheritsNothingOfOurs) {
    const TemporaryFolder folder;
    folder.WriteFile("held", "");
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE held = CreateFileA(folder.Path("held").c_str(), GENERIC_READ, 0, &inheritable,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    StartWaiting(folder);
    CloseHandle(held);
    // Somebody else's handle would still be in the way.
    EXPECT_TRUE(DeleteFileA(folder.Path("held").c_str()));
    EndWaiting(folder);
}

TEST(RunPipeline, TheLastCommandDecides) {
    const Platform::Command good = {"cmd", "/c", "exit 0"};
    const Platform::Command bad = {"cmd", "/c", "exit 3"};
    EXPECT_TRUE(RunPipeline({good}));
    EXPECT_FALSE(RunPipeline({bad}));
    EXPECT_TRUE(RunPipeline({bad, good}));
    EXPECT_FALSE(RunPipeline({good, bad}));
}

TEST(RunPipeline, OutputGoesToTheNextCommand) {
    const TemporaryFolder folder;
    folder.WriteFile("two.bat", "@echo off\r\necho words\r\n");
    folder.WriteFile("take.bat",
                     "@echo off\r\ncd /d \"%~dp0\"\r\nset /p line=\r\necho %line%>out\r\n");
    EXPECT_TRUE(RunPipeline(
        {{"cmd", "/c", folder.Path("two.bat")}, {"cmd", "/c", folder.Path("take.bat")}}));
    // Wine's shell may take the last letter of what it reads for a part of the line's end.
    EXPECT_TRUE(folder.ReadFile("out").starts_with("word"));
}

TEST(RunPipeline, AMissingProgramIsAFailureAndNobodyIsLeftWaiting) {
    EXPECT_FALSE(RunPipeline({{"no-such-program-anywhere.exe"}, {"cmd", "/c", "exit 0"}}));
    EXPECT_FALSE(RunPipeline({{"cmd", "/c", "exit 0"}, {"no-such-program-anywhere.exe"}}));
    EXPECT_FALSE(RunPipeline({}));
}

}  // namespace
