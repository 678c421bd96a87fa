#include "Support/NamedObjects_win32.h"

#include "OwnedHandle_win32.h"

using Platform::OwnedHandle;

bool TimerIsThere(const char* name) {
    return OwnedHandle(OpenWaitableTimerA(SYNCHRONIZE, FALSE, name)).IsValid();
}

bool MutexIsThere(const char* name) {
    return OwnedHandle(OpenMutexA(SYNCHRONIZE, FALSE, name)).IsValid();
}

bool PipeIsThere(const char* name) {
    return OwnedHandle(CreateFileA(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                                   nullptr))
        .IsValid();
}
