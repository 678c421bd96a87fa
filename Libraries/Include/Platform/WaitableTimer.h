#pragma once

#include <cstdint>
#include <string>

namespace Platform {

/// A timer that fires once and then stays fired. Errors are the system's own numbers, 0 for none.
class WaitableTimer {
  public:
    WaitableTimer() = default;
    WaitableTimer(const WaitableTimer&) = delete;
    WaitableTimer& operator=(const WaitableTimer&) = delete;
    ~WaitableTimer() { Close(); }

    /// Makes the timer, which does not run yet. On Windows processes that name the same timer share
    /// it; elsewhere the name has no meaning.
    std::uint32_t Create(const std::string& name);
    /// Lets the timer fire once after so many milliseconds.
    std::uint32_t Set(std::uint32_t milliseconds);
    bool HasFired() const;
    void Close();

  private:
    static constexpr std::intptr_t kClosed = -1;

    std::intptr_t handle = kClosed;
};

}  // namespace Platform
