#include "Support/DebuggerLines_win32.h"

#include <windows.h>

#include <cstddef>

namespace {

constexpr DWORD kPlaceBytes = 4096;
// A text begins behind the number of the process that sends it.
constexpr std::size_t kTextStart = sizeof(DWORD);
constexpr DWORD kMilliseconds = 100;

}  // namespace

DebuggerLines::DebuggerLines()
    : place(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kPlaceBytes,
                               "DBWIN_BUFFER")),
      isFree(CreateEventA(nullptr, FALSE, FALSE, "DBWIN_BUFFER_READY")),
      isFilled(CreateEventA(nullptr, FALSE, FALSE, "DBWIN_DATA_READY")),
      view(static_cast<const char*>(MapViewOfFile(place, FILE_MAP_READ, 0, 0, 0))),
      taker(&DebuggerLines::Take, this) {
    SetEvent(isFree);
}

void DebuggerLines::Take() {
    // What is there when the end comes is still taken.
    for (bool isLast = false; !isLast;) {
        isLast = isStopping;
        while (WaitForSingleObject(isFilled, kMilliseconds) == WAIT_OBJECT_0) {
            lines.emplace_back(view + kTextStart);
            SetEvent(isFree);
        }
    }
}

std::vector<std::string> DebuggerLines::Stop() {
    if (taker.joinable()) {
        isStopping = true;
        taker.join();
        UnmapViewOfFile(view);
        for (void* const object : {place, isFree, isFilled}) CloseHandle(object);
    }
    return lines;
}
