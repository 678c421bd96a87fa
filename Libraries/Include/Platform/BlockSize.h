#pragma once

#include <cstddef>

namespace Platform {

/// How many bytes a block of std::malloc holds, at least as many as were asked for.
std::size_t BlockSize(void* block);

}  // namespace Platform
