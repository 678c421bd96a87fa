#include "Document/BlockStreamBuffer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

constexpr std::size_t kBlock = CBlockStreamBuffer::kBlockBytes;

std::string Pattern(std::size_t size) {
    std::string text(size, ' ');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>('a' + i % 23);
    return text;
}

std::string Drain(CBlockStreamBuffer& buffer) {
    std::string text;
    for (; buffer.GetBlockCount() != 0; buffer.PopFront()) {
        const CBlockStreamBuffer::Block& block = buffer.GetBlock(0);
        text.append(block.data, block.used);
    }
    return text;
}

TEST(BlockStreamBuffer, HoldsNoBlockBeforeTheFirstCharacter) {
    CBlockStreamBuffer buffer;
    std::ostream out(&buffer);
    EXPECT_EQ(buffer.GetBlockCount(), 0u);
    out << "";
    EXPECT_EQ(buffer.GetBlockCount(), 0u);
    out << 'x';
    ASSERT_EQ(buffer.GetBlockCount(), 1u);
    EXPECT_EQ(buffer.GetBlock(0).used, 1u);
    EXPECT_EQ(buffer.GetBlock(0).data[0], 'x');
}

TEST(BlockStreamBuffer, LastBlockTellsWhatIsUsedSoFar) {
    CBlockStreamBuffer buffer;
    std::ostream out(&buffer);
    out << "abc";
    EXPECT_EQ(buffer.GetBlock(0).used, 3u);
    out << "de";
    EXPECT_EQ(buffer.GetBlock(0).used, 5u);
}

TEST(BlockStreamBuffer, ContentsOfAnySizeComeBackInOrder) {
    for (const std::size_t size :
         {kBlock - 2, kBlock - 1, kBlock, kBlock + 1, 2 * kBlock - 1, 2 * kBlock, 3 * kBlock + 7}) {
        const std::string text = Pattern(size);
        CBlockStreamBuffer buffer;
        std::ostream out(&buffer);
        out << text;
        EXPECT_EQ(Drain(buffer), text) << size;
    }
}

TEST(BlockStreamBuffer, SingleCharactersFillTheSlotThatIsKeptFree) {
    CBlockStreamBuffer buffer;
    const std::string text = Pattern(kBlock + 5);
    for (std::size_t i = 0; i < kBlock - 1; ++i) buffer.sputc(text[i]);
    EXPECT_EQ(buffer.GetBlockCount(), 1u);
    EXPECT_EQ(buffer.GetBlock(0).used, kBlock - 1);
    buffer.sputc(text[kBlock - 1]);
    ASSERT_EQ(buffer.GetBlockCount(), 2u);
    EXPECT_EQ(buffer.GetBlock(0).used, kBlock);
    EXPECT_EQ(buffer.GetBlock(1).used, 0u);
    for (std::size_t i = kBlock; i < text.size(); ++i) buffer.sputc(text[i]);
    EXPECT_EQ(Drain(buffer), text);
}

TEST(BlockStreamBuffer, EndOfFileIsNotStored) {
    CBlockStreamBuffer buffer;
    EXPECT_NE(buffer.sputc('a'), std::char_traits<char>::eof());
    EXPECT_EQ(buffer.pubsync(), 0);
    EXPECT_EQ(Drain(buffer), "a");
}

TEST(BlockStreamBuffer, CanBeFilledAgainOnceItIsEmpty) {
    CBlockStreamBuffer buffer;
    std::ostream out(&buffer);
    out << "first";
    EXPECT_EQ(Drain(buffer), "first");
    out << "second";
    EXPECT_EQ(Drain(buffer), "second");
}

}  // namespace
