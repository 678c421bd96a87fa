#include <BiffLib/COffset.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include "BiffLib/WrittenBytes.h"

using Biff::CBlock;
using Biff::kAbsolute;
using Biff::kRelative;
using Biff::ReserveLabel;
using QelTools::Common::TextException;

namespace {

constexpr char kTooLarge[] = "Offset is too large to fit in given storage.";
constexpr char kMisaligned[] = "Target of offset is not correctly aligned.";

void AppendBytes(CBlock& block, std::size_t count) {
    const std::vector<char> bytes(count, 'x');
    block.AppendData(bytes.data(), 1, static_cast<std::uint32_t>(count));
}

// An offset at the start of a file to a label at `target`.
std::string OffsetTo(std::uint32_t target, std::uint32_t origin, std::uint32_t storage,
                     std::uint32_t stride, std::uint32_t endian = Biff::kLittleEndian) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendOffset(label, origin, storage, stride);
    AppendBytes(block, target - storage);
    block.AppendLabel(label);
    return Written(block, endian).substr(0, storage);
}

// A relative offset with stride 1 to a label `distance` bytes in front of it.
std::string OffsetBack(std::uint32_t distance, std::uint32_t storage, std::uint32_t endian) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendLabel(label);
    AppendBytes(block, distance);
    block.AppendOffset(label, kRelative, storage, 1);
    return Written(block, endian).substr(distance);
}

}  // namespace

TEST(Offset, StorageAndStrideAreCheckedInOrder) {
    CBlock block;
    const auto text = [&](std::uint32_t storage, std::uint32_t stride) {
        return ThrownText<TextException>(
            [&] { block.AppendOffset(1, kAbsolute, storage, stride); });
    };
    EXPECT_EQ(text(0, 0), "Offset storage must be at least one byte.");
    EXPECT_EQ(text(5, 0), "Offsets storage of more than 4 bytes are not supported.");
    EXPECT_EQ(text(4, 0), "Offset strides must be at least 1 byte.");
    EXPECT_TRUE(block.items.empty());
}

TEST(Offset, IsReturnedAndLeavesTheKind) {
    CBlock block;
    Biff::COffset& offset = block.AppendOffset(7, kRelative, 3, 2);
    EXPECT_EQ(&offset, block.items.back().get());
    EXPECT_EQ(offset.label, 7u);
    EXPECT_EQ(offset.origin, kRelative);
    EXPECT_EQ(offset.storage, 3u);
    EXPECT_EQ(offset.stride, 2u);
    EXPECT_EQ(offset.position, 0u);
    EXPECT_EQ(offset.SizeAt(9), 3u);
    EXPECT_EQ(block.kind, Biff::kEmptyBlock);
}

TEST(Offset, RemembersWhereItWasWritten) {
    CBlock block;
    AppendBytes(block, 5);
    const Biff::COffset& offset = block.AppendOffset(ReserveLabel(), kRelative, 4, 1);
    Little(block);
    EXPECT_EQ(offset.position, 5u);
}

TEST(Offset, CountsFromItsOwnFirstByte) {
    EXPECT_EQ(OffsetTo(4, kRelative, 4, 1), Bytes("\4\0\0\0"));
    EXPECT_EQ(OffsetTo(4, kRelative, 4, 1, Biff::kBigEndian), Bytes("\0\0\0\4"));
}

TEST(Offset, ToALabelInFrontIsNegative) {
    EXPECT_EQ(OffsetBack(3, 4, Biff::kLittleEndian), Bytes("\xFD\xFF\xFF\xFF"));
    EXPECT_EQ(OffsetBack(3, 4, Biff::kBigEndian), Bytes("\xFF\xFF\xFF\xFD"));
    EXPECT_EQ(OffsetBack(300, 2, Biff::kLittleEndian), Bytes("\xD4\xFE"));
    EXPECT_EQ(OffsetBack(300, 3, Biff::kBigEndian), Bytes("\xFF\xFE\xD4"));
}

TEST(Offset, ToItselfIsZeroInAnyStorage) {
    for (std::uint32_t storage = 1; storage <= 4; ++storage)
        EXPECT_EQ(OffsetBack(0, storage, Biff::kLittleEndian), std::string(storage, '\0'));
}

TEST(Offset, RelativeBytesReachOneHundredAndTwentySevenBothWays) {
    EXPECT_EQ(OffsetTo(127, kRelative, 1, 1), Bytes("\x7F"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(128, kRelative, 1, 1); }), kTooLarge);
    EXPECT_EQ(OffsetBack(127, 1, Biff::kLittleEndian), Bytes("\x81"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetBack(128, 1, Biff::kLittleEndian); }),
              kTooLarge);
}

TEST(Offset, AbsoluteBytesReachTwoHundredAndFiftyFiveStrides) {
    EXPECT_EQ(OffsetTo(1020, kAbsolute, 1, 4), Bytes("\xFF"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(1024, kAbsolute, 1, 4); }), kTooLarge);
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(1022, kAbsolute, 1, 4); }), kMisaligned);
    EXPECT_EQ(OffsetTo(255, kAbsolute, 1, 1), Bytes("\xFF"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(256, kAbsolute, 1, 1); }), kTooLarge);
}

TEST(Offset, WiderStorageHasItsOwnLimits) {
    EXPECT_EQ(OffsetTo(0xFFFF, kAbsolute, 2, 1, Biff::kBigEndian), Bytes("\xFF\xFF"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(0x10000, kAbsolute, 2, 1); }), kTooLarge);
    EXPECT_EQ(OffsetTo(0x7FFF, kRelative, 2, 1), Bytes("\xFF\x7F"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(0x8000, kRelative, 2, 1); }), kTooLarge);
    EXPECT_EQ(OffsetTo(0x12345, kAbsolute, 3, 1), Bytes("\x45\x23\x01"));
    EXPECT_EQ(OffsetTo(0x12345, kAbsolute, 3, 1, Biff::kBigEndian), Bytes("\x01\x23\x45"));
}

TEST(Offset, MeasuresFromItsPositionRoundedDownToTheStride) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    AppendBytes(block, 7);
    block.AppendOffset(label, kRelative, 1, 4);
    block.AppendAlign(4);
    AppendBytes(block, 4);
    block.AppendLabel(label);
    EXPECT_EQ(Little(block).substr(7, 1), Bytes("\2"));
}

TEST(Offset, MeasuresBackFromItsPositionRoundedDown) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    AppendBytes(block, 4);
    block.AppendLabel(label);
    AppendBytes(block, 11);
    block.AppendOffset(label, kRelative, 2, 4);
    EXPECT_EQ(Big(block).substr(15), Bytes("\xFF\xFE"));
}

TEST(Offset, OfAStrideThatIsNoPowerOfTwo) {
    EXPECT_EQ(OffsetTo(12, kAbsolute, 1, 3), Bytes("\4"));
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(13, kAbsolute, 1, 3); }), kMisaligned);
}

TEST(Offset, OfEitherOriginNeedsATargetAtAMultipleOfTheStrideInTheFile) {
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(13, kRelative, 1, 4); }), kMisaligned);
    EXPECT_EQ(ThrownText<TextException>([] { OffsetTo(1022, kRelative, 1, 4); }), kMisaligned);
    // A whole stride away from the offset's own place is not enough.
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    AppendBytes(block, 2);
    block.AppendOffset(label, kRelative, 4, 4);
    block.AppendLabel(label);
    EXPECT_EQ(ThrownText<TextException>([&] { Little(block); }), kMisaligned);
}

TEST(Offset, ToALabelThatNobodyAppendedKeepsItsPlaceholder) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendOffset(label, kRelative, 3, 4);
    block.AppendOffset(label, kAbsolute, 2, 4);
    EXPECT_EQ(Little(block), Bytes("\0\0\0\xFF\xFF"));
    EXPECT_EQ(Big(block), Bytes("\0\0\0\xFF\xFF"));
}

TEST(Offset, AnUnknownOriginFailsWhenWriting) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendLabel(label);
    block.AppendOffset(label, 2, 4, 1);
    EXPECT_EQ(ThrownText<TextException>([&] { Little(block); }), "Unknown offset base type.");
}

TEST(Offset, SeveralToOneLabelInFrontAndBehind) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendOffset(label, kRelative, 2, 1);
    block.AppendOffset(label, kAbsolute, 2, 1);
    block.AppendLabel(label);
    block.AppendOffset(label, kRelative, 2, 1);
    block.AppendOffset(label, kAbsolute, 2, 1);
    EXPECT_EQ(Little(block), Bytes("\4\0\4\0\0\0\4\0"));
}

TEST(Offset, AnUnknownOriginFailsWhenResolvingToo) {
    std::ostringstream stream;
    Biff::CLabel label(ReserveLabel());
    label.Write(stream, Biff::kLittleEndian);
    const Biff::COffset offset(label.label, 2, 4, 1);
    EXPECT_EQ(ThrownText<TextException>([&] { offset.Resolve(stream, Biff::kLittleEndian); }),
              "Unknown offset origin method.");
}
