#include "FinalOutput_win32.h"

#include <atomic>

namespace Platform {

namespace {

std::atomic<HANDLE> keptByCapture = nullptr;
static_assert(std::atomic<HANDLE>::is_always_lock_free);

bool IsSame(HANDLE a, HANDLE b) {
    BY_HANDLE_FILE_INFORMATION first;
    BY_HANDLE_FILE_INFORMATION second;
    return GetFileInformationByHandle(a, &first) && GetFileInformationByHandle(b, &second) &&
           first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
           first.nFileIndexHigh == second.nFileIndexHigh &&
           first.nFileIndexLow == second.nFileIndexLow;
}

}  // namespace

HANDLE FinalOutput() {
    const HANDLE kept = keptByCapture;
    return kept != nullptr ? kept : GetStdHandle(STD_OUTPUT_HANDLE);
}

void SetFinalOutput(HANDLE handle) {
    keptByCapture = handle;
}

bool IsPrintedInto(HANDLE file) {
    return IsSame(file, FinalOutput()) || IsSame(file, GetStdHandle(STD_ERROR_HANDLE));
}

}  // namespace Platform
