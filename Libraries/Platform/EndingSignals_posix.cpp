#include "EndingSignals_posix.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <utility>

namespace Platform {

namespace {

/// All that others may send, or a limit, and that end a process.
constexpr int kSignals[] = {SIGINT,  SIGTERM, SIGHUP,  SIGQUIT,   SIGXCPU,
                            SIGALRM, SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF};

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
    for (const int number : kSignals) {
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
    sigemptyset(&deferred);
    for (const int number : kSignals) sigaddset(&deferred, number);
    pthread_sigmask(SIG_BLOCK, &deferred, &before);
}

DeferSignals::~DeferSignals() {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace Platform
