#include "EndingEvents_win32.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

constexpr const char* kFolderVariable = "RIGBAKE_TEST_EVENT_FOLDER";

/// Set where somebody types Ctrl+C as soon as the file "ready" is there.
constexpr const char* kTypedVariable = "RIGBAKE_TEST_EVENT_IS_TYPED";

/// Sends a console event to this process, or has it sent, and waits for the end; 9 when none comes.
[[noreturn]] void EndByEvent(const std::string& folder) {
    SetConsoleCtrlHandler(nullptr, FALSE);
    if (std::getenv(kTypedVariable) != nullptr)
        std::ofstream(folder + "/ready") << "ready";
    else if (!GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, 0))
        std::_Exit(8);
    Sleep(20000);
    std::_Exit(9);
}

/// What a child of this program does when the variable names its folder.
void BeTheChild(const std::string& folder) {
    const Platform::RemoveOnEvent one(folder + "/one");
    const Platform::RemoveOnEvent two(folder + "/two");
    { const Platform::RemoveOnEvent other(folder + "/other"); }
    EndByEvent(folder);
}

/// Runs the test named below in a process of its own, with a console where one is to be had, and
/// gives its exit status.
DWORD RunChild(const std::string& folder) {
    setenv(kFolderVariable, folder.c_str(), 1);
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    std::string line = std::string("\"") + program + "\" --gtest_filter=EndingEvents.Child";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    DWORD status = 7;
    if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE, nullptr,
                       nullptr, &startup, &process)) {
        WaitForSingleObject(process.hProcess, 60000);
        GetExitCodeProcess(process.hProcess, &status);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    unsetenv(kFolderVariable);
    return status;
}

TEST(EndingEvents, Child) {
    const char* const folder = std::getenv(kFolderVariable);
    if (folder == nullptr)
        GTEST_SKIP() << "for the other test's child and for Tests/Windows/console_events";
    BeTheChild(folder);
}

TEST(EndingEvents, TheNamedFilesAreGoneWhenAnEventEndsTheProcess) {
    const TemporaryFolder folder;
    for (const char* name : {"one", "two", "other", "stranger"}) folder.WriteFile(name, "");
    const DWORD status = RunChild(folder.Path());
    if (status == 8)
        GTEST_SKIP() << "no event can be sent here; Tests/Windows/console_events types one";
    EXPECT_EQ(status, 0xC000013Au);
    EXPECT_FALSE(fs::exists(folder.Path("one")));
    EXPECT_FALSE(fs::exists(folder.Path("two")));
    EXPECT_TRUE(fs::exists(folder.Path("other")));
    EXPECT_TRUE(fs::exists(folder.Path("stranger")));
}

}  // namespace
