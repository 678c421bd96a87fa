#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace Qel::LeastSquares {

/// Hands out blocks of one size from one array: in order until the array has been walked through,
/// then those that were freed; past that from the general heap, which is counted.
class FixedPool {
  public:
    FixedPool(std::size_t blockSize, std::size_t blockCount);
    FixedPool(const FixedPool&) = delete;
    FixedPool& operator=(const FixedPool&) = delete;

    void* Allocate();
    void Free(void* block);
    /// Takes every block of the array back at once; throws "attempt to wipe a pool with outstanding
    /// overflow allocations" while blocks from the heap are out.
    void Wipe();
    std::size_t GetOverflowCount() const { return overflow; }

  private:
    std::size_t size;
    std::size_t count;
    std::unique_ptr<std::byte[]> memory;
    std::vector<void*> freed;
    std::size_t highWater = 0;
    std::size_t overflow = 0;
};

}  // namespace Qel::LeastSquares
