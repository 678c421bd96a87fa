#include "EndingSignals_posix.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <iterator>
#include <utility>

namespace Platform {

namespace {

/// A process that makes one of these cannot go on, nor wait.
constexpr int kFaults[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};
/// These end no process where nobody handles them.
constexpr int kHarmless[] = {SIGCHLD, SIGCONT, SIGTSTP, SIGTTIN, SIGTTOU, SIGURG, SIGWINCH};

template <std::size_t kCount>
bool IsOneOf(const int (&numbers)[kCount], int number) {
    return std::find(std::begin(numbers), std::end(numbers), number) != std::end(numbers);
}

/// More files than any program of ours writes at one time; a further one is not removed.
constexpr std::size_t kMostFiles = 8;
std::array<std::atomic<const char*>, kMostFiles> names;
static_assert(std::atomic<const char*>::is_always_lock_free);

/// Calls nothing but what a signal handler may call.
void RemoveAndEnd(int number) {
    RemoveUnfinishedFiles();
    // The process ends as it would have ended without us, once this handler returns.
    signal(number, SIG_DFL);
    raise(number);
}

void InstallHandler() {
    for (int number = 1; number <= SIGRTMAX; ++number) {
        if (IsOneOf(kFaults, number) || IsOneOf(kHarmless, number)) continue;
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
        action.sa_handler = RemoveAndEnd;
        sigfillset(&action.sa_mask);
        sigaction(number, &action, nullptr);
    }
}

}  // namespace

void RemoveUnfinishedFiles() {
    for (std::atomic<const char*>& name : names)
        if (const char* file = name.exchange(nullptr)) unlink(file);
}

RemoveOnSignal::RemoveOnSignal(std::string fileName) : name(std::move(fileName)), slot(0) {
    InstallHandler();
    const char* empty = nullptr;
    while (slot < kMostFiles && !names[slot].compare_exchange_strong(empty, name.c_str())) {
        empty = nullptr;
        ++slot;
    }
}

RemoveOnSignal::~RemoveOnSignal() {
    if (slot < kMostFiles) names[slot] = nullptr;
}

DeferSignals::DeferSignals() {
    sigset_t deferred;
    sigfillset(&deferred);
    for (const int number : kFaults) sigdelset(&deferred, number);
    pthread_sigmask(SIG_BLOCK, &deferred, &before);
}

DeferSignals::~DeferSignals() {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace Platform
