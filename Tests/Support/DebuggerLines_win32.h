#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

/// Takes what programs send to the system's debugger while it lives, as one that watches them all.
class DebuggerLines {
  public:
    DebuggerLines();
    DebuggerLines(const DebuggerLines&) = delete;
    DebuggerLines& operator=(const DebuggerLines&) = delete;
    ~DebuggerLines() { Stop(); }

    /// Ends the watch; what was sent until then, in order.
    std::vector<std::string> Stop();

  private:
    void Take();

    // Of the system: the place for a text, and the events that it is free and that it is filled.
    void* place;
    void* isFree;
    void* isFilled;
    const char* view;
    std::vector<std::string> lines;
    std::atomic<bool> isStopping = false;
    std::thread taker;
};
