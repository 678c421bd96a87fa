#pragma once

#include <cstddef>

/// Hands out blocks of one size on 16-byte boundaries, carved from larger chunks, so that a small
/// object costs neither a header of its own nor a trip to the system's allocator. For one thread,
/// as the scene tree is. Under AddressSanitizer every block is an allocation of its own, so that
/// misuse is found.
class BlockPool {
  public:
    static constexpr std::size_t kAlignment = 16;

    explicit BlockPool(std::size_t bytes);
    /// Gives all memory back, blocks in use included.
    ~BlockPool();
    BlockPool(const BlockPool&) = delete;
    BlockPool& operator=(const BlockPool&) = delete;

    /// Throws std::bad_alloc.
    void* Take();
    void Give(void* block) noexcept;

  private:
    struct Chunk;
    struct FreeBlock {
        FreeBlock* next;
    };

    void AddChunk();
    void StartChunk(Chunk* chunk);
    void FreeChunksBehind(Chunk* kept) noexcept;

    std::size_t blockBytes;
    std::size_t chunkBytes;
    std::size_t inUse = 0;
    FreeBlock* freeBlocks = nullptr;
    std::byte* untouched = nullptr;  // the part of the newest chunk that no block has used yet
    std::byte* untouchedEnd = nullptr;
    Chunk* newest = nullptr;
};
