#include "EndingEvents_win32.h"

#include <Platform/OpenForReading.h>
#include <Platform/UnfinishedFile.h>

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

constexpr const char* kFolderVariable = "RIGBAKE_TEST_EVENT_FOLDER";

/// Set where somebody types Ctrl+C as soon as the file "ready" is there.
constexpr const char* kTypedVariable = "RIGBAKE_TEST_EVENT_IS_TYPED";

/// The event that befalls the child, as the system numbers them.
constexpr const char* kEventVariable = "RIGBAKE_TEST_EVENT";

/// What the child's exit status says: that no event can be sent, and that none ended it.
constexpr DWORD kNothingSent = 8;
constexpr DWORD kOutlived = 9;

/// Delivers an event as the system does: by a thread of the process that begins in the system's own
/// routine for it. False where that is not to be found.
bool Deliver(DWORD event) {
    for (const char* const library : {"kernelbase.dll", "kernel32.dll"}) {
        const FARPROC routine = GetProcAddress(GetModuleHandleA(library), "CtrlRoutine");
        if (routine == nullptr) continue;
        const auto start =
            reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(routine));
        void* const argument = reinterpret_cast<void*>(static_cast<std::uintptr_t>(event));
        const HANDLE thread = CreateThread(nullptr, 0, start, argument, 0, nullptr);
        if (thread == nullptr) return false;
        CloseHandle(thread);
        return true;
    }
    return false;
}

/// Has begun something when the event comes, and takes its time.
void FinishDuringEvent(const std::string& folder) {
    const Platform::DeferEvents untilItIsFinished;
    if (!Deliver(static_cast<DWORD>(std::atoi(std::getenv(kEventVariable)))))
        std::_Exit(static_cast<int>(kNothingSent));
    Sleep(200);
    std::ofstream(folder + "/finished") << "finished";
}

/// Waits for the event that ends this process.
[[noreturn]] void EndByEvent(const std::string& folder) {
    SetConsoleCtrlHandler(nullptr, FALSE);
    if (std::getenv(kTypedVariable) != nullptr)
        std::ofstream(folder + "/ready") << "ready";
    else
        FinishDuringEvent(folder);
    Sleep(20000);
    std::_Exit(static_cast<int>(kOutlived));
}

/// What a child of this program does when the variable names its folder.
void BeTheChild(const std::string& folder) {
    for (int i = 0; i < 20; ++i) const Platform::RemoveOnEvent other(folder + "/other");
    const Platform::RemoveOnEvent one(folder + "/one");
    const Platform::RemoveOnEvent two(folder + "/two");
    // One that is being written, and read back.
    Platform::UnfinishedFile unfinished;
    if (unfinished.CreateBeside(folder + "/stranger") != 0 || unfinished.Write("text", 4) != 0)
        std::_Exit(static_cast<int>(kNothingSent));
    const Platform::OpenedFile reader = Platform::OpenForReading(unfinished.GetName());
    EndByEvent(folder);
}

/// Runs the test named below in a process of its own, with a console where one is to be had, and
/// gives its exit status.
DWORD RunChild(const std::string& folder, DWORD event) {
    setenv(kFolderVariable, folder.c_str(), 1);
    setenv(kEventVariable, std::to_string(event).c_str(), 1);
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    std::string line = std::string("\"") + program + "\" --gtest_filter=EndingEventsChild.*";
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
    unsetenv(kEventVariable);
    return status;
}

TEST(EndingEventsChild, WaitsForItsEvent) {
    const char* const folder = std::getenv(kFolderVariable);
    if (folder == nullptr)
        GTEST_SKIP() << "for the other test's child and for Tests/Windows/console";
    BeTheChild(folder);
}

class EndingEvents : public testing::TestWithParam<DWORD> {};

TEST_P(EndingEvents, TheNamedFilesAreGoneWhenAnEventEndsTheProcess) {
    const TemporaryFolder folder;
    for (const char* name : {"one", "two", "other", "stranger"}) folder.WriteFile(name, "");
    const DWORD status = RunChild(folder.Path(), GetParam());
    if (status == kNothingSent)
        GTEST_SKIP() << "no event can be sent here; Tests/Windows/console types one";
    EXPECT_NE(status, kOutlived);
    EXPECT_FALSE(folder.Has("one"));
    EXPECT_FALSE(folder.Has("two"));
    EXPECT_TRUE(folder.Has("other"));
    EXPECT_TRUE(folder.Has("stranger"));
    EXPECT_TRUE(folder.Has("finished"));
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_NE(entry.path().filename().string().front(), '.') << entry.path();
}

INSTANTIATE_TEST_SUITE_P(OfTheConsole, EndingEvents,
                         testing::Values(DWORD{CTRL_C_EVENT}, DWORD{CTRL_BREAK_EVENT},
                                         DWORD{CTRL_CLOSE_EVENT}, DWORD{CTRL_LOGOFF_EVENT},
                                         DWORD{CTRL_SHUTDOWN_EVENT}),
                         [](const testing::TestParamInfo<DWORD>& event) {
                             switch (event.param) {
                                 case CTRL_C_EVENT:
                                     return "CtrlC";
                                 case CTRL_BREAK_EVENT:
                                     return "CtrlBreak";
                                 case CTRL_CLOSE_EVENT:
                                     return "TheClosing";
                                 case CTRL_LOGOFF_EVENT:
                                     return "TheLoggingOff";
                                 default:
                                     return "TheShutdown";
                             }
                         });

}  // namespace
