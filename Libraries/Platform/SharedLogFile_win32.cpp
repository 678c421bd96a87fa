#include <Platform/SharedLogFile.h>

#include "FileName_win32.h"

#include <windows.h>

#include <cstdio>
#include <utility>

namespace Platform {

// The mutex lives as long as the process: the log is written up to its end.
SharedLogFile::SharedLogFile(std::string logPath, const std::string& lockName)
    : path(std::move(logPath)), lock(CreateMutexA(nullptr, FALSE, lockName.c_str())) {}

void SharedLogFile::Append(std::string_view text) const {
    // In a further stream of a file that is written the text would be content of that file.
    if (lock == nullptr || NamesStream(path) || HidesDevice(path)) return;
    const DWORD wait = WaitForSingleObject(lock, INFINITE);
    if (wait != WAIT_OBJECT_0 && wait != WAIT_ABANDONED) return;
    if (std::FILE* const file = std::fopen(path.c_str(), "a+"); file != nullptr) {
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
    ReleaseMutex(lock);
}

void SendToDebugger(const std::string& text) {
    OutputDebugStringA(text.c_str());
}

}  // namespace Platform
