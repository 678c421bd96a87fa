#pragma once

#include <cstddef>

/// Memory of the scene's small objects, on 16-byte boundaries, from one pool for each size. For one
/// thread, as the scene tree is.
namespace ObjectPool {

/// Throws std::bad_alloc.
void* Take(std::size_t size);
/// Gives back what Take gave for the same size; null is ignored.
void Give(void* memory, std::size_t size) noexcept;

}  // namespace ObjectPool
