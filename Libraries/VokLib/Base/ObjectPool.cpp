#include "Base/ObjectPool.h"

#include "Base/BlockPool.h"

#include <new>
#include <utility>

namespace {

constexpr std::size_t kLargestPooled = 1024;
constexpr std::size_t kSizeClasses = kLargestPooled / BlockPool::kAlignment;

struct ObjectPools {
    ObjectPools() : ObjectPools(std::make_index_sequence<kSizeClasses>()) {}
    template <std::size_t... Index>
    explicit ObjectPools(std::index_sequence<Index...>)
        : pools{BlockPool((Index + 1) * BlockPool::kAlignment)...} {}

    BlockPool pools[kSizeClasses];
};

/// The pool of the size class that holds `size` bytes; null for objects too large for a pool.
BlockPool* FindPool(std::size_t size) {
    // Never destroyed: it outlives every object, those of static duration included.
    static ObjectPools& objectPools = *new ObjectPools;
    if (size == 0 || size > kLargestPooled) return nullptr;
    return &objectPools.pools[(size - 1) / BlockPool::kAlignment];
}

}  // namespace

void* ObjectPool::Take(std::size_t size) {
    if (BlockPool* pool = FindPool(size)) return pool->Take();
    return ::operator new (size, std::align_val_t{BlockPool::kAlignment});
}

void ObjectPool::Give(void* memory, std::size_t size) noexcept {
    if (memory == nullptr) return;
    if (BlockPool* pool = FindPool(size))
        pool->Give(memory);
    else
        ::operator delete (memory, std::align_val_t{BlockPool::kAlignment});
}
