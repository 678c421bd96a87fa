#include "Support/Processes.h"

#include <windows.h>
// Behind the header on which it stands.
#include <tlhelp32.h>

#include "OwnedHandle_win32.h"

namespace {

/// A process that has ended is listed as long as somebody holds it.
bool IsRunning(DWORD process) {
    const Platform::OwnedHandle handle(OpenProcess(SYNCHRONIZE, FALSE, process));
    return handle.IsValid() && WaitForSingleObject(handle.Get(), 0) == WAIT_TIMEOUT;
}

}  // namespace

std::vector<int> RunningProxies(const std::string&) {
    std::vector<int> found;
    const Platform::OwnedHandle all(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32First(all.Get(), &entry); more;
         more = Process32Next(all.Get(), &entry))
        if (_stricmp(entry.szExeFile, "QelHashProxy.exe") == 0 && IsRunning(entry.th32ProcessID))
            found.push_back(static_cast<int>(entry.th32ProcessID));
    return found;
}

// Those that step aside are gone in a moment; the one that serves is the one that stays.
int ServingProxy(const std::string& folder) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
        const std::vector<int> running = RunningProxies(folder);
        if (running.size() < 2) return running.empty() ? 0 : running.front();
        Sleep(5);
    }
    return 0;
}

void KillProcess(int process) {
    if (process <= 0) return;
    const Platform::OwnedHandle handle(
        OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, static_cast<DWORD>(process)));
    if (!handle.IsValid()) return;
    TerminateProcess(handle.Get(), 1);
    WaitForSingleObject(handle.Get(), 10000);
}
