#include <BiffLib/CData.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "BiffLib/WrittenBytes.h"

using Biff::CBlock;
using Biff::CData;
using QelTools::Common::TextException;

namespace {

const CData& OnlyData(const CBlock& block) {
    EXPECT_EQ(block.items.size(), 1u);
    return dynamic_cast<const CData&>(*block.items.front());
}

}  // namespace

TEST(Data, ElementsOfEachSizeAreReversedAsOneUnit) {
    CBlock block;
    block.AppendData(InHostOrder({1, 2}, 1).data(), 1, 2);
    block.AppendData(InHostOrder({1, 2, 3, 4}, 2).data(), 2, 2);
    block.AppendData(InHostOrder({1, 2, 3, 4, 5, 6}, 3).data(), 3, 2);
    const std::vector<std::uint8_t> large{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    block.AppendData(InHostOrder(large, 16).data(), 16, 1);
    block.AppendData(InHostOrder(large, 8).data(), 8, 2);
    EXPECT_EQ(Big(block), Bytes("\1\2"
                                "\2\1\4\3"
                                "\3\2\1\6\5\4"
                                "\17\16\15\14\13\12\11\10\7\6\5\4\3\2\1\0"
                                "\7\6\5\4\3\2\1\0\17\16\15\14\13\12\11\10"));
    EXPECT_EQ(Little(block), Bytes("\1\2"
                                   "\1\2\3\4"
                                   "\1\2\3\4\5\6"
                                   "\0\1\2\3\4\5\6\7\10\11\12\13\14\15\16\17"
                                   "\0\1\2\3\4\5\6\7\10\11\12\13\14\15\16\17"));
}

TEST(Data, EveryOrderButOneIsLittle) {
    CBlock block;
    block.AppendU16(0x0102);
    EXPECT_EQ(Written(block, 0), Bytes("\2\1"));
    EXPECT_EQ(Written(block, 1), Bytes("\1\2"));
    EXPECT_EQ(Written(block, 2), Bytes("\2\1"));
    EXPECT_EQ(Written(block, 0xFFFFFFFFu), Bytes("\2\1"));
}

TEST(Data, AnElementOfSeventeenBytesIsRefusedBeforeAnythingIsCopied) {
    CBlock block;
    const std::array<std::uint8_t, 17> bytes{};
    EXPECT_EQ(ThrownText<TextException>([&] { block.AppendData(bytes.data(), 17, 1); }),
              "BiffLib cannot handle data element sizes greater than 16 bytes");
    EXPECT_TRUE(block.items.empty());
    EXPECT_EQ(block.kind, Biff::kEmptyBlock);
    block.AppendData(bytes.data(), 16, 1);
    EXPECT_EQ(OnlyData(block).bytes.size(), 16u);
}

TEST(Data, NeighboursShareAnItemButNotARun) {
    CBlock block;
    block.AppendU32(1);
    block.AppendU32(2);
    block.AppendU16(3);
    const CData& data = OnlyData(block);
    EXPECT_EQ(data.bytes.size(), 10u);
    ASSERT_EQ(data.runs.size(), 3u);
    EXPECT_EQ(data.runs[1].elementSize, 4u);
    EXPECT_EQ(data.runs[1].count, 1u);
    EXPECT_EQ(data.runs[2].elementSize, 2u);
    EXPECT_EQ(data.SizeAt(7), 10u);
}

TEST(Data, AnyOtherItemEndsTheSharing) {
    CBlock block;
    block.AppendU8(1);
    block.AppendLabel(Biff::ReserveLabel());
    block.AppendU8(2);
    EXPECT_EQ(block.items.size(), 3u);
    EXPECT_EQ(Little(block), Bytes("\1\2"));
}

TEST(Data, NoElementsMakeAnEmptyItem) {
    CBlock block;
    block.AppendData(nullptr, 4, 0);
    block.AppendData(nullptr, 0, 7);
    EXPECT_EQ(block.kind, Biff::kLeafBlock);
    EXPECT_EQ(OnlyData(block).runs.size(), 2u);
    EXPECT_EQ(OnlyData(block).SizeAt(3), 0u);
    EXPECT_EQ(Little(block), "");
    block.AppendU16(0x0102);
    EXPECT_EQ(Big(block), Bytes("\1\2"));
}

TEST(Data, LongRunsAreReversedWhole) {
    for (const std::uint32_t size : {1u, 2u, 3u, 5u, 7u, 16u}) {
        CBlock block;
        std::vector<std::uint8_t> bytes(size * 5000u);
        for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 7);
        block.AppendData(InHostOrder(bytes, size).data(), size, 5000);
        const std::string big = Big(block);
        ASSERT_EQ(big.size(), bytes.size());
        for (std::size_t i = 0; i < bytes.size(); ++i)
            ASSERT_EQ(static_cast<std::uint8_t>(big[i]),
                      bytes[i / size * size + (size - 1 - i % size)]);
    }
}

TEST(Data, TypedElementsHaveTheirOwnBytes) {
    CBlock block;
    block.AppendMagic("SK08");
    block.AppendU32(0x01020304u);
    block.AppendI32(-2);
    block.AppendFloat(1.0f);
    const std::array<float, 2> values{-2.0f, 0.5f};
    block.AppendFloats(values);
    EXPECT_EQ(Big(block), Bytes("SK08"
                                "\x01\x02\x03\x04"
                                "\xFF\xFF\xFF\xFE"
                                "\x3F\x80\x00\x00"
                                "\xC0\x00\x00\x00"
                                "\x3F\x00\x00\x00"));
    EXPECT_EQ(Little(block), Bytes("SK08"
                                   "\x04\x03\x02\x01"
                                   "\xFE\xFF\xFF\xFF"
                                   "\x00\x00\x80\x3F"
                                   "\x00\x00\x00\xC0"
                                   "\x00\x00\x00\x3F"));
}

TEST(Data, EveryNotANumberIsWrittenAlike) {
    CBlock block;
    const float quiet = std::numeric_limits<float>::quiet_NaN();
    const std::array<float, 3> values{1.0f, -quiet, 2.0f};
    block.AppendFloat(std::copysign(quiet, -1.0f));
    block.AppendFloats(values);
    EXPECT_EQ(Big(block), Bytes("\x7F\xC0\x00\x00"
                                "\x3F\x80\x00\x00"
                                "\x7F\xC0\x00\x00"
                                "\x40\x00\x00\x00"));
}
