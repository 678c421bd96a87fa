#include "LeastSquares/FixedPool.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <functional>
#include <new>

namespace Qel::LeastSquares {

FixedPool::FixedPool(std::size_t blockSize, std::size_t blockCount)
    : size(blockSize),
      count(blockCount),
      memory(std::make_unique_for_overwrite<std::byte[]>(blockSize * blockCount)) {
    freed.reserve(blockCount);
}

void* FixedPool::Allocate() {
    if (highWater < count) return memory.get() + size * highWater++;
    if (!freed.empty()) {
        void* block = freed.back();
        freed.pop_back();
        return block;
    }
    void* block = ::operator new(size);
    ++overflow;
    return block;
}

void FixedPool::Free(void* block) {
    const std::less<const void*> before;
    if (!before(block, memory.get()) && before(block, memory.get() + size * count)) {
        freed.push_back(block);
    } else {
        ::operator delete(block);
        --overflow;
    }
}

void FixedPool::Wipe() {
    if (overflow != 0) throw Error("attempt to wipe a pool with outstanding overflow allocations");
    highWater = 0;
    freed.clear();
}

}  // namespace Qel::LeastSquares
