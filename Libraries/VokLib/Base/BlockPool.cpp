#include "Base/BlockPool.h"

#include <algorithm>
#include <new>

// GCC and MSVC tell by a macro, Clang by a feature test.
#if defined(__SANITIZE_ADDRESS__)
#define BLOCK_POOL_PLAIN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BLOCK_POOL_PLAIN 1
#endif
#endif
#ifndef BLOCK_POOL_PLAIN
#define BLOCK_POOL_PLAIN 0
#endif

namespace {

constexpr bool kPlainAllocation = BLOCK_POOL_PLAIN != 0;
constexpr std::size_t kChunkBytes = std::size_t{64} * 1024;
constexpr std::size_t kLeastBlocks = 8;
constexpr std::align_val_t kAlign{BlockPool::kAlignment};

constexpr std::size_t RoundUp(std::size_t bytes) {
    return (bytes + BlockPool::kAlignment - 1) / BlockPool::kAlignment * BlockPool::kAlignment;
}

}  // namespace

struct BlockPool::Chunk {
    Chunk* older;
};

BlockPool::BlockPool(std::size_t bytes)
    : blockBytes(RoundUp(std::max(bytes, sizeof(FreeBlock)))),
      chunkBytes(RoundUp(sizeof(Chunk)) +
                 blockBytes *
                     std::max(kLeastBlocks, (kChunkBytes - RoundUp(sizeof(Chunk))) / blockBytes)) {}

BlockPool::~BlockPool() {
    if (newest == nullptr) return;
    FreeChunksBehind(newest);
    ::operator delete(newest, kAlign);
}

void* BlockPool::Take() {
    if constexpr (kPlainAllocation) return ::operator new(blockBytes, kAlign);
    if (freeBlocks == nullptr && untouched == untouchedEnd) AddChunk();
    ++inUse;
    if (freeBlocks != nullptr) {
        FreeBlock* block = freeBlocks;
        freeBlocks = block->next;
        return block;
    }
    std::byte* block = untouched;
    untouched += blockBytes;
    return block;
}

void BlockPool::Give(void* block) noexcept {
    if constexpr (kPlainAllocation) {
        ::operator delete(block, kAlign);
        return;
    }
    freeBlocks = ::new (block) FreeBlock{freeBlocks};
    if (--inUse != 0) return;
    // Everything is free: one chunk stays for the next document, the rest goes back.
    FreeChunksBehind(newest);
    StartChunk(newest);
}

void BlockPool::AddChunk() {
    void* memory = ::operator new(chunkBytes, kAlign);
    newest = ::new (memory) Chunk{newest};
    StartChunk(newest);
}

void BlockPool::StartChunk(Chunk* chunk) {
    std::byte* begin = reinterpret_cast<std::byte*>(chunk);
    untouched = begin + RoundUp(sizeof(Chunk));
    untouchedEnd = begin + chunkBytes;
    freeBlocks = nullptr;
}

void BlockPool::FreeChunksBehind(Chunk* kept) noexcept {
    while (Chunk* chunk = kept->older) {
        kept->older = chunk->older;
        ::operator delete(chunk, kAlign);
    }
}
