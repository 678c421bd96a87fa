#pragma once

#include <pthread.h>
#include <signal.h>

#include <atomic>
#include <chrono>
#include <thread>

/// Signals whose handler ends the system call in which the thread that made this waits. One at a
/// time.
class Interruptions {
  public:
    Interruptions() {
        handled = 0;
        struct sigaction interrupt {};
        interrupt.sa_handler = [](int) { ++handled; };
        sigaction(SIGUSR1, &interrupt, &before);
    }
    Interruptions(const Interruptions&) = delete;
    Interruptions& operator=(const Interruptions&) = delete;
    ~Interruptions() { sigaction(SIGUSR1, &before, nullptr); }

    /// Called in another thread: so many signals, a millisecond apart, or until the wait is over.
    void Send(int count) {
        for (int last = handled + count; handled < last && !isOver;
             std::this_thread::sleep_for(std::chrono::milliseconds(1)))
            pthread_kill(waiting, SIGUSR1);
    }

    /// The wait is over.
    void End() { isOver = true; }
    bool AreOver() const { return isOver; }

  private:
    static inline std::atomic<int> handled;
    std::atomic<bool> isOver = false;
    pthread_t waiting = pthread_self();
    struct sigaction before {};
};
