#include "Sanitizer/MemoryPeak.h"

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace MemoryPeak {

namespace {

// Signed: what was held before Reset may be freed behind it.
std::atomic<long long> held{0};
std::atomic<long long> peak{0};

void Take(const volatile void*, std::size_t size) {
    const long long now = held += static_cast<long long>(size);
    if (now > peak) peak = now;
}

void Give(const volatile void* memory) {
    if (memory != nullptr && __sanitizer_get_ownership(memory) != 0)
        held -= static_cast<long long>(__sanitizer_get_allocated_size(memory));
}

}  // namespace

void Install() {
    if (__sanitizer_install_malloc_and_free_hooks(Take, Give) == 0) std::abort();
}

void Reset() {
    held = 0;
    peak = 0;
}

std::size_t Get() {
    return static_cast<std::size_t>(std::max(peak.load(), 0LL));
}

}  // namespace MemoryPeak
