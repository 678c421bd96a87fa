#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <streambuf>
#include <vector>

/// An output stream buffer made of blocks of one mebibyte, so that a document of any size needs no
/// memory in one piece. The format update writes into it; the reader takes the blocks from the
/// front.
class CBlockStreamBuffer : public std::streambuf {
  public:
    static constexpr std::size_t kBlockBytes = 0x100000;

    struct Block {
        char data[kBlockBytes];
        std::uint32_t used;
    };
    static_assert(sizeof(Block) == 0x100004);

    std::size_t GetBlockCount() const { return blocks.size(); }
    /// `index` must be below GetBlockCount(). The last block's used count is brought up to date.
    const Block& GetBlock(std::size_t index);
    /// Frees the first block, of which there must be one.
    void PopFront();

  protected:
    int_type overflow(int_type character) override;

  private:
    void StartBlock();

    std::vector<std::unique_ptr<Block>> blocks;
};
