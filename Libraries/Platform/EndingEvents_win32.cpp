#include "EndingEvents_win32.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <mutex>
#include <new>
#include <utility>

namespace Platform {

namespace {

/// More files than any program of ours writes at one time; a further one is not removed.
constexpr std::size_t kMostFiles = 8;

/// The system calls the handler on a thread of its own, so that locks may be taken there.
struct Pending {
    std::mutex files;
    std::array<const std::string*, kMostFiles> names{};
    std::mutex unbroken;
};

Pending& GetPending() {
    // Never destroyed, and there without memory: the handler may come while the process is ending,
    // and memory may be what has ended.
    alignas(Pending) static std::byte place[sizeof(Pending)];
    static Pending* const pending = new (place) Pending;
    return *pending;
}

BOOL WINAPI RemoveAndEnd(DWORD) {
    Pending& pending = GetPending();
    // Kept for good, for the process ends as soon as this handler has returned.
    pending.unbroken.lock();
    RemoveUnfinishedFiles();
    return FALSE;
}

void InstallHandler() {
    static const BOOL installed = SetConsoleCtrlHandler(&RemoveAndEnd, TRUE);
    static_cast<void>(installed);
}

}  // namespace

void RemoveUnfinishedFiles() {
    Pending& pending = GetPending();
    pending.files.lock();
    for (const std::string* const name : pending.names)
        if (name != nullptr) DeleteFileA(name->c_str());
}

RemoveOnEvent::RemoveOnEvent(std::string fileName) : name(std::move(fileName)), slot(0) {
    InstallHandler();
    Pending& pending = GetPending();
    const std::lock_guard lock(pending.files);
    while (slot < kMostFiles && pending.names[slot] != nullptr) ++slot;
    if (slot < kMostFiles) pending.names[slot] = &name;
}

RemoveOnEvent::~RemoveOnEvent() {
    Pending& pending = GetPending();
    const std::lock_guard lock(pending.files);
    if (slot < kMostFiles) pending.names[slot] = nullptr;
}

DeferEvents::DeferEvents() {
    InstallHandler();
    GetPending().unbroken.lock();
}

DeferEvents::~DeferEvents() {
    GetPending().unbroken.unlock();
}

}  // namespace Platform
