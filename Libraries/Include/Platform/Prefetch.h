#pragma once

namespace Platform {

/// Tells the processor that the memory at `address` will be looked at soon; any address will do.
inline void Prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

}  // namespace Platform
