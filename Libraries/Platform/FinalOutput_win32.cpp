#include "FinalOutput_win32.h"

#include <atomic>

namespace Platform {

namespace {

std::atomic<HANDLE> keptByCapture = nullptr;
static_assert(std::atomic<HANDLE>::is_always_lock_free);

}  // namespace

HANDLE FinalOutput() {
    const HANDLE kept = keptByCapture;
    return kept != nullptr ? kept : GetStdHandle(STD_OUTPUT_HANDLE);
}

void SetFinalOutput(HANDLE handle) {
    keptByCapture = handle;
}

}  // namespace Platform
