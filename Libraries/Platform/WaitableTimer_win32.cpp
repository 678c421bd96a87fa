#include <Platform/WaitableTimer.h>

#include <windows.h>

namespace Platform {

namespace {

// Relative times are negative, in units of 100 nanoseconds.
constexpr LONGLONG kUnitsOfAMillisecond = 10'000;

HANDLE TimerHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

std::uint32_t WaitableTimer::Create(const std::string& name) {
    Close();
    const HANDLE timer = CreateWaitableTimerA(nullptr, TRUE, name.c_str());
    if (timer == nullptr) return GetLastError();
    handle = reinterpret_cast<std::intptr_t>(timer);
    return 0;
}

std::uint32_t WaitableTimer::Set(std::uint32_t milliseconds) {
    LARGE_INTEGER due;
    due.QuadPart = -kUnitsOfAMillisecond * static_cast<LONGLONG>(milliseconds);
    return SetWaitableTimer(TimerHandle(handle), &due, 0, nullptr, nullptr, FALSE) ? 0
                                                                                   : GetLastError();
}

bool WaitableTimer::HasFired() const {
    return WaitForSingleObject(TimerHandle(handle), 0) == WAIT_OBJECT_0;
}

void WaitableTimer::Close() {
    if (handle != kClosed) CloseHandle(TimerHandle(handle));
    handle = kClosed;
}

}  // namespace Platform
