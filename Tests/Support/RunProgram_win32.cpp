#include "Support/RunProgram.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

#include "CommandLineText_win32.h"
#include "OwnedHandle_win32.h"
#include "Support/TemporaryFolder.h"

namespace {

/// This system's names of variables know no letter case.
struct NameOrder {
    bool operator()(const std::string& a, const std::string& b) const {
        return _stricmp(a.c_str(), b.c_str()) < 0;
    }
};

/// This process's variables with those of the call, as the system takes them.
std::string EnvironmentBlock(const std::map<std::string, std::string>& more) {
    std::map<std::string, std::string, NameOrder> variables;
    char* const own = GetEnvironmentStringsA();
    for (const char* entry = own; *entry != '\0'; entry += std::strlen(entry) + 1) {
        // The names of some of the system's own begin with the sign.
        if (const char* const sign = std::strchr(entry + 1, '='))
            variables[std::string(entry, sign)] = sign + 1;
    }
    FreeEnvironmentStringsA(own);
    variables.erase("QEL_HASH_SERVER_NAME");
    for (const auto& [name, value] : more) variables[name] = value;
    std::string block;
    for (const auto& [name, value] : variables) {
        block += name + "=" + value;
        block += '\0';
    }
    return block + '\0';
}

/// A file, or another thing of that name, for a child's stream.
HANDLE OpenForChild(const std::string& name) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE file =
        CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    &inheritable, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot open " + name);
    return file;
}

std::string WithLineFeeds(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') result += text[i];
    return result;
}

}  // namespace

ProgramResult RunProgram(const ProgramCall& call) {
    const TemporaryFolder work;
    const bool hasOutput = !call.redirections.starts_with(">&-");
    const bool hasErrors = call.redirections.find("2>&-") == std::string::npos;
    const bool isElsewhere = hasOutput && call.redirections.starts_with(">");
    Platform::OwnedHandle input(OpenForChild("NUL"));
    Platform::OwnedHandle output;
    Platform::OwnedHandle errors;
    if (hasOutput)
        output.Reset(OpenForChild(isElsewhere ? call.redirections.substr(1) : work.Path("out")));
    if (hasErrors) errors.Reset(OpenForChild(work.Path("err")));

    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Get();
    startup.hStdOutput = hasOutput ? output.Get() : nullptr;
    startup.hStdError = hasErrors ? errors.Get() : nullptr;
    const bool isName = call.program.find_first_of("/\\") == std::string::npos;
    Platform::Command command{isName ? BuiltProgram(call.program) : call.program};
    command.insert(command.end(), call.arguments.begin(), call.arguments.end());
    std::string line = Platform::CommandLineText(command);
    std::string variables = EnvironmentBlock(call.environment);
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(command[0].c_str(), line.data(), nullptr, nullptr, TRUE, 0,
                        variables.data(), call.folder.c_str(), &startup, &process))
        throw std::runtime_error("cannot start " + line + ": " + std::to_string(GetLastError()));
    const Platform::OwnedHandle child(process.hProcess);
    CloseHandle(process.hThread);
    DWORD status = 0;
    WaitForSingleObject(child.Get(), INFINITE);
    GetExitCodeProcess(child.Get(), &status);
    return {static_cast<int>(status), WithLineFeeds(work.ReadFile("out")),
            WithLineFeeds(work.ReadFile("err"))};
}

std::string BuiltProgram(const std::string& name) {
    const bool hasEnding = name.ends_with(".exe");
    return std::string(RIGBAKE_PROGRAMS "/") + name + (hasEnding ? "" : ".exe");
}
