#include <BiffLib/CBlock.h>
#include <BiffLib/CNestedBlock.h>
#include <QelTools/Exception.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "BiffLib/WrittenBytes.h"

using Biff::CBlock;
using Biff::CNestedBlock;
using Biff::kAbsolute;
using Biff::kRelative;
using Biff::ReserveLabel;

namespace {

constexpr std::uint32_t kTag = 0x44434241u;  // "ABCD" on a little-endian host

CBlock& Nest(CBlock& outer) {
    auto inner = std::make_unique<CBlock>();
    CBlock& block = *inner;
    outer.items.push_back(std::make_unique<CNestedBlock>(std::move(inner)));
    return block;
}

std::string TagBytes() {
    return std::string(reinterpret_cast<const char*>(&kTag), sizeof kTag);
}

// Refuses everything behind the first `limit` bytes.
class FullBuffer : public std::stringbuf {
  public:
    explicit FullBuffer(std::size_t size) : std::stringbuf(std::ios_base::out), limit(size) {}

  protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        if (str().size() + static_cast<std::size_t>(size) > limit) return 0;
        return std::stringbuf::xsputn(text, size);
    }

  private:
    std::size_t limit;
};

// Takes bytes and knows nothing of positions.
class Pipe : public std::streambuf {
  public:
    std::string taken;

  protected:
    int_type overflow(int_type character) override {
        taken.push_back(traits_type::to_char_type(character));
        return character;
    }
};

}  // namespace

TEST(Block, StartsEmpty) {
    CBlock block;
    EXPECT_EQ(block.kind, 0u);
    EXPECT_EQ(block.tag, 0u);
    EXPECT_EQ(block.origin, 0u);
    EXPECT_EQ(block.alignment, 1u);
    EXPECT_EQ(block.position, 0u);
    EXPECT_EQ(block.size, 0u);
    EXPECT_EQ(Little(block), "");
    EXPECT_EQ(Big(block), "");
}

TEST(Block, StartsAtItsAlignmentInTheStream) {
    CBlock block;
    block.alignment = 8;
    block.AppendU16(0x0102);
    std::ostringstream stream;
    stream << "abc";
    block.Write(stream, Biff::kLittleEndian);
    EXPECT_EQ(stream.str(), Bytes("abc\0\0\0\0\0\2\1"));
    EXPECT_EQ(block.position, 8u);
    EXPECT_EQ(block.size, 2u);
    EXPECT_EQ(stream.tellp(), 10);
}

TEST(Block, LeavesTheStreamAtItsEnd) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendOffset(label, kRelative, 1, 1);
    block.AppendLabel(label);
    block.AppendU32(5);
    std::ostringstream stream;
    block.Write(stream, Biff::kLittleEndian);
    stream << '!';
    EXPECT_EQ(stream.str(), Bytes("\1\5\0\0\0!"));
}

TEST(Block, IsWrittenTwiceAlike) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendOffset(label, kRelative, 4, 1);
    block.AppendAlign(16);
    block.AppendLabel(label);
    block.AppendU32(0x01020304u);
    const std::string little = Little(block);
    EXPECT_EQ(little, Bytes("\x10\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\4\3\2\1"));
    EXPECT_EQ(Big(block), Bytes("\0\0\0\x10\0\0\0\0\0\0\0\0\0\0\0\0\1\2\3\4"));
    EXPECT_EQ(Little(block), little);
    EXPECT_EQ(block.size, 20u);
}

TEST(Block, ATagBringsADirectoryWithAbsolutePlaces) {
    CBlock block;
    block.tag = kTag;
    block.alignment = 4;
    block.AppendMagic("12345");
    const auto written = [&](std::uint32_t endian) {
        std::ostringstream stream;
        stream << "ab";
        block.Write(stream, endian);
        return stream.str();
    };
    EXPECT_EQ(written(Biff::kLittleEndian), Bytes("ab\0\0"
                                                  "12345\0\0\0") +
                                                TagBytes() + Bytes("\4\0\0\0\5\0\0\0\x0C\0\0\0"));
    EXPECT_EQ(written(Biff::kBigEndian), Bytes("ab\0\0"
                                               "12345\0\0\0") +
                                             TagBytes() + Bytes("\0\0\0\4\0\0\0\5\0\0\0\x0C"));
}

TEST(Block, ARelativeDirectoryCountsFromItsOwnWords) {
    CBlock block;
    block.tag = kTag;
    block.origin = kRelative;
    block.AppendMagic("1234");
    // The place is told at 8, so the block lies 8 in front; the last word, at 16, lies 12 behind
    // the directory.
    EXPECT_EQ(Little(block),
              Bytes("1234") + TagBytes() + Bytes("\xF8\xFF\xFF\xFF\4\0\0\0\xF4\xFF\xFF\xFF"));
    EXPECT_EQ(Big(block),
              Bytes("1234") + TagBytes() + Bytes("\xFF\xFF\xFF\xF8\0\0\0\4\xFF\xFF\xFF\xF4"));
}

TEST(Block, ADirectoryOfAnotherOriginHasNoPlace) {
    CBlock block;
    block.tag = kTag;
    block.origin = 9;
    block.AppendMagic("1234");
    EXPECT_EQ(Little(block), Bytes("1234") + TagBytes() + Bytes("\4\0\0\0\4\0\0\0"));
}

TEST(Block, ADirectoryOfBlocksCountsThemOverAllDepths) {
    CBlock outer;
    outer.kind = Biff::kBlockOfBlocks;
    outer.tag = kTag;
    CBlock& first = Nest(outer);
    first.AppendMagic("AB");
    Nest(first).AppendMagic("CD");
    Nest(outer).AppendMagic("EFGH");
    EXPECT_EQ(Little(outer),
              Bytes("ABCDEFGH") + TagBytes() + Bytes("\xFF\xFF\xFF\xFF\x24\0\0\0\x08\0\0\0"));
    EXPECT_EQ(Big(outer),
              Bytes("ABCDEFGH") + TagBytes() + Bytes("\xFF\xFF\xFF\xFF\0\0\0\x24\0\0\0\x08"));
}

TEST(Block, NestedBlocksShareLabelsAndKeepTheirAlignment) {
    CBlock outer;
    const std::uint32_t inside = ReserveLabel();
    const std::uint32_t behind = ReserveLabel();
    outer.AppendOffset(inside, kAbsolute, 1, 1);
    CBlock& inner = Nest(outer);
    inner.alignment = 4;
    inner.AppendOffset(behind, kRelative, 1, 1);
    inner.AppendLabel(inside);
    inner.AppendU16(0x0102);
    outer.AppendLabel(behind);
    EXPECT_EQ(Little(outer), Bytes("\5\0\0\0\3\2\1"));
    EXPECT_EQ(inner.position, 4u);
    EXPECT_EQ(inner.size, 3u);
    EXPECT_EQ(outer.items[1]->SizeAt(1), 6u);
}

TEST(Block, AStreamThatTakesNoMoreIsAFailure) {
    CBlock block;
    block.AppendU32(1);
    block.AppendAlign(64);
    block.AppendU32(2);
    for (const std::size_t limit : {0u, 3u, 40u, 67u}) {
        FullBuffer buffer(limit);
        std::ostream stream(&buffer);
        EXPECT_EQ(ThrownText<QelTools::Common::Exception>(
                      [&] { block.Write(stream, Biff::kLittleEndian); }),
                  "Failed to write the Biff: the output did not take all of it.");
    }
    FullBuffer buffer(68);
    std::ostream stream(&buffer);
    block.Write(stream, Biff::kLittleEndian);
    EXPECT_EQ(buffer.str(), Little(block));
}

TEST(Block, AStreamWithoutPositionsCountsFromZero) {
    CBlock block;
    block.AppendU8(1);
    block.AppendOffset(ReserveLabel(), kAbsolute, 1, 1);
    Pipe pipe;
    std::ostream stream(&pipe);
    block.Write(stream, Biff::kLittleEndian);
    EXPECT_EQ(pipe.taken, Bytes("\1\xFF"));
    EXPECT_EQ(block.position, 0u);
    EXPECT_EQ(block.size, 0u);
}

TEST(Block, AStreamThatCannotTakeAnOffsetIsAFailure) {
    CBlock block;
    const std::uint32_t label = ReserveLabel();
    block.AppendLabel(label);
    block.AppendOffset(label, kAbsolute, 1, 1);
    Pipe pipe;
    std::ostream stream(&pipe);
    EXPECT_EQ(
        ThrownText<QelTools::Common::Exception>([&] { block.Write(stream, Biff::kLittleEndian); }),
        "Failed to write the Biff: the output did not take all of it.");
}
