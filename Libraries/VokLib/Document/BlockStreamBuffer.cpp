#include "Document/BlockStreamBuffer.h"

const CBlockStreamBuffer::Block& CBlockStreamBuffer::GetBlock(std::size_t index) {
    Block& block = *blocks[index];
    if (index + 1 == blocks.size()) block.used = static_cast<std::uint32_t>(pptr() - block.data);
    return block;
}

void CBlockStreamBuffer::PopFront() {
    blocks.erase(blocks.begin());
    if (blocks.empty()) setp(nullptr, nullptr);
}

CBlockStreamBuffer::int_type CBlockStreamBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    if (blocks.empty()) {
        StartBlock();
        return sputc(traits_type::to_char_type(character));
    }
    // The put area ends one short of the block, so that the character that did not fit has its
    // slot.
    *pptr() = traits_type::to_char_type(character);
    blocks.back()->used = kBlockBytes;
    StartBlock();
    return character;
}

void CBlockStreamBuffer::StartBlock() {
    blocks.push_back(std::make_unique_for_overwrite<Block>());
    Block& block = *blocks.back();
    block.used = 0;
    setp(block.data, block.data + kBlockBytes - 1);
}
