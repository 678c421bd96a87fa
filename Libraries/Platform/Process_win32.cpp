#include <Platform/Process.h>

#include "CommandLineText_win32.h"
#include "NullDevice_win32.h"
#include "OwnedHandle_win32.h"

#include <windows.h>

#include <memory>

namespace Platform {

namespace {

/// A start-up record that lets a child inherit the given handles and no others of ours.
class StreamsForChild {
  public:
    StreamsForChild(HANDLE input, HANDLE output, HANDLE errors) : handles{input, output, errors} {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory = std::make_unique<char[]>(size);
        startup.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.get());
        InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size);
        UpdateProcThreadAttribute(startup.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST,
                                  handles, sizeof handles, nullptr, nullptr);
        startup.StartupInfo.cb = sizeof startup;
        startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
        startup.StartupInfo.hStdInput = input;
        startup.StartupInfo.hStdOutput = output;
        startup.StartupInfo.hStdError = errors;
    }
    StreamsForChild(const StreamsForChild&) = delete;
    StreamsForChild& operator=(const StreamsForChild&) = delete;
    ~StreamsForChild() { DeleteProcThreadAttributeList(startup.lpAttributeList); }

    STARTUPINFOA* Get() { return &startup.StartupInfo; }

  private:
    HANDLE handles[3];
    std::unique_ptr<char[]> memory;
    STARTUPINFOEXA startup{};
};

SECURITY_ATTRIBUTES Inheritable() {
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

HANDLE OpenNullDevice() {
    SECURITY_ATTRIBUTES inheritable = Inheritable();
    return CreateFileA(kNullDevice, GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, OPEN_EXISTING, 0, nullptr);
}

/// 0 or the system's error number; with 0 the child's handle is the caller's.
int StartWithStreams(const Command& command, HANDLE input, HANDLE output, HANDLE& child) {
    OwnedHandle errors(OpenNullDevice());
    StreamsForChild streams(input, output, errors.Get());
    std::string line = CommandLineText(command);
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, EXTENDED_STARTUPINFO_PRESENT,
                        nullptr, nullptr, streams.Get(), &process))
        return static_cast<int>(GetLastError());
    CloseHandle(process.hThread);
    child = process.hProcess;
    return 0;
}

bool EndsWell(HANDLE child) {
    DWORD status = 1;
    return WaitForSingleObject(child, INFINITE) == WAIT_OBJECT_0 &&
           GetExitCodeProcess(child, &status) && status == 0;
}

/// Starts every command with its neighbours' pipes; false when one could not be started, with those
/// before it in `children`.
bool StartPipeline(const std::vector<Command>& commands,
                   std::vector<std::unique_ptr<OwnedHandle>>& children) {
    OwnedHandle input(OpenNullDevice());
    for (const Command& command : commands) {
        if (command.empty()) return false;
        OwnedHandle output;
        OwnedHandle nextInput;
        if (&command != &commands.back()) {
            HANDLE readEnd = nullptr;
            HANDLE writeEnd = nullptr;
            SECURITY_ATTRIBUTES inheritable = Inheritable();
            if (!CreatePipe(&readEnd, &writeEnd, &inheritable, 0)) return false;
            nextInput.Reset(readEnd);
            output.Reset(writeEnd);
        } else {
            output.Reset(OpenNullDevice());
        }
        HANDLE child = nullptr;
        if (StartWithStreams(command, input.Get(), output.Get(), child) != 0) return false;
        children.push_back(std::make_unique<OwnedHandle>(child));
        input.Reset(nextInput.Release());
    }
    return true;
}

}  // namespace

int StartDetached(const Command& command) {
    if (command.empty()) return ERROR_FILE_NOT_FOUND;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    // Without handles of its own a child of the same console gets copies of ours, and whoever reads
    // our output would wait for its end, too.
    startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.wShowWindow = SW_HIDE;
    std::string line = CommandLineText(command);
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return static_cast<int>(GetLastError());
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return 0;
}

void LeaveStartersConsole() {
    STARTUPINFOA startup{};
    GetStartupInfoA(&startup);
    const bool isHidden =
        (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_HIDE;
    // The streams are no sign: not every system leaves one that was started without them as it is.
    if (isHidden && (startup.dwFlags & STARTF_USESTDHANDLES) != 0) FreeConsole();
}

bool RunPipeline(const std::vector<Command>& commands) {
    std::vector<std::unique_ptr<OwnedHandle>> children;
    const bool started = StartPipeline(commands, children);
    bool lastEndedWell = false;
    for (const auto& child : children) lastEndedWell = EndsWell(child->Get());
    return started && lastEndedWell;
}

}  // namespace Platform
