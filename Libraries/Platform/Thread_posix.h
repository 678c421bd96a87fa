#pragma once

#include <pthread.h>

#include <cstddef>
#include <functional>

namespace Platform {

/// A thread with a stack of a chosen size. Join or Detach follows a Start that succeeded.
class Thread {
  public:
    /// 0, or why there is no thread: ENOMEM where no memory for its stack was to be had, which the
    /// C library tells as it tells too many threads. `action` throws nothing.
    int Start(std::size_t stackBytes, std::function<void()> action);
    void Join() { pthread_join(thread, nullptr); }
    void Detach() { pthread_detach(thread); }

  private:
    pthread_t thread{};
};

}  // namespace Platform
