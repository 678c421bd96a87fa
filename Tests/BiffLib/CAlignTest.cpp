#include <BiffLib/CAlign.h>
#include <gtest/gtest.h>

#include "BiffLib/WrittenBytes.h"

using Biff::CAlign;
using Biff::CBlock;

TEST(Align, PadsWithZerosToAMultipleOfTheFilePosition) {
    CBlock block;
    block.AppendU8(0xAA);
    block.AppendAlign(4);
    block.AppendU8(0xBB);
    block.AppendAlign(3);
    block.AppendAlign(3);
    block.AppendU8(0xCC);
    const std::string expected = Bytes("\xAA\0\0\0\xBB\0\xCC");
    EXPECT_EQ(Little(block), expected);
    EXPECT_EQ(Big(block), expected);
}

TEST(Align, SizeIsWhatIsMissing) {
    const CAlign align(16);
    EXPECT_EQ(align.SizeAt(0), 0u);
    EXPECT_EQ(align.SizeAt(1), 15u);
    EXPECT_EQ(align.SizeAt(15), 1u);
    EXPECT_EQ(align.SizeAt(16), 0u);
    EXPECT_EQ(align.SizeAt(4294967295u), 1u);
}

TEST(Align, MakesTheBlockALeaf) {
    CBlock block;
    block.AppendAlign(8);
    EXPECT_EQ(block.kind, Biff::kLeafBlock);
    EXPECT_EQ(Little(block), "");
}

TEST(Align, OfNothingOrOnePadsNothing) {
    CBlock block;
    block.AppendU8(1);
    block.AppendAlign(0);
    block.AppendAlign(1);
    block.AppendU8(2);
    EXPECT_EQ(Little(block), Bytes("\1\2"));
}

TEST(Align, LongPaddingIsWhole) {
    CBlock block;
    block.AppendU8(1);
    block.AppendAlign(1000);
    EXPECT_EQ(Little(block), Bytes("\1") + std::string(999, '\0'));
}
