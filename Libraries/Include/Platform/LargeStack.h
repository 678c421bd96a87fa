#pragma once

#include <cstddef>
#include <functional>

namespace Platform {

/// Runs `action` on a thread of its own, with a stack of at least `stackBytes`, and waits for it.
/// What it throws is thrown here. Without memory for the stack std::bad_alloc is thrown; another
/// reason why no thread is to be had is a std::system_error.
void RunOnLargeStack(std::size_t stackBytes, const std::function<void()>& action);

}  // namespace Platform
