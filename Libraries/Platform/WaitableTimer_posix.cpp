#include <Platform/WaitableTimer.h>

#include <poll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>

namespace Platform {

std::uint32_t WaitableTimer::Create(const std::string&) {
    Close();
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    if (timer < 0) return static_cast<std::uint32_t>(errno);
    handle = timer;
    return 0;
}

std::uint32_t WaitableTimer::Set(std::uint32_t milliseconds) {
    itimerspec due{};
    due.it_value.tv_sec = milliseconds / 1000;
    due.it_value.tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000;
    if (milliseconds == 0) due.it_value.tv_nsec = 1;  // a time of 0 would stop the timer
    const int failed = timerfd_settime(static_cast<int>(handle), 0, &due, nullptr);
    return failed == 0 ? 0 : static_cast<std::uint32_t>(errno);
}

bool WaitableTimer::HasFired() const {
    pollfd state{static_cast<int>(handle), POLLIN, 0};
    const int ready = poll(&state, 1, 0);
    // Nobody is to wait for a timer that cannot be asked.
    return ready > 0 || (ready < 0 && errno != EINTR);
}

void WaitableTimer::Close() {
    if (handle != kClosed) close(static_cast<int>(handle));
    handle = kClosed;
}

}  // namespace Platform
