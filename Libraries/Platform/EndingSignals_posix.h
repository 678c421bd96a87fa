#pragma once

#include <signal.h>

#include <cstddef>
#include <string>

namespace Platform {

/// While it lives, the file of this name is removed when a signal from outside ends the process.
/// Signals that are ignored or handled otherwise are left alone. Made and ended on one thread, the
/// one that takes the signals.
class RemoveOnSignal {
  public:
    explicit RemoveOnSignal(std::string fileName);
    ~RemoveOnSignal();
    RemoveOnSignal(const RemoveOnSignal&) = delete;
    RemoveOnSignal& operator=(const RemoveOnSignal&) = delete;

    const std::string& GetName() const { return name; }

  private:
    std::string name;
    std::size_t slot;
};

/// Removes the files of all that live. Calls nothing but what a signal handler may call.
void RemoveUnfinishedFiles();

/// Keeps the signals that end a process from outside waiting on this thread while it lives.
class DeferSignals {
  public:
    DeferSignals();
    ~DeferSignals();
    DeferSignals(const DeferSignals&) = delete;
    DeferSignals& operator=(const DeferSignals&) = delete;

  private:
    sigset_t before;
};

}  // namespace Platform
