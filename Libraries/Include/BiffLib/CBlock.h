#pragma once

#include <BiffLib/CLabel.h>
#include <BiffLib/COffset.h>
#include <BiffLib/CWritable.h>

#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Biff {

/// The container that a producer fills in file order and writes once for each byte order that it
/// wants. Nothing can be taken out of it; it owns its items. Two writes cannot overlap, for the
/// table of labels is the process's.
class CBlock {
  public:
    CBlock() = default;
    CBlock(const CBlock&) = delete;
    CBlock& operator=(const CBlock&) = delete;

    /// Names the place of whatever is appended next. A label may be appended once; a second time
    /// shows when writing.
    void AppendLabel(std::uint32_t label);

    /// Pads with zero bytes to a multiple of `multiple` bytes in the file.
    void AppendAlign(std::uint32_t multiple);

    /// Appends a reference to `label` of `storage` bytes (1 to 4), counted in units of `stride`
    /// bytes from `from` (kAbsolute or kRelative), and returns it; the block keeps it. Throws a
    /// TextException for a storage or stride out of range; an unknown origin shows when writing.
    COffset& AppendOffset(std::uint32_t label, std::uint32_t from, std::uint32_t storage,
                          std::uint32_t stride);

    /// Copies `count` elements of `elementSize` bytes, which lie back to back in the host's byte
    /// order. Throws a TextException for elements of more than 16 bytes. `source` may be null when
    /// there is nothing to copy.
    void AppendData(const void* source, std::uint32_t elementSize, std::uint32_t count);

    /// One element each.
    void AppendU8(std::uint8_t value);
    void AppendU16(std::uint16_t value);
    void AppendU32(std::uint32_t value);
    void AppendI32(std::int32_t value);

    /// IEEE single precision, one element each; every not-a-number becomes 0x7FC00000, so that
    /// files do not depend on which one the host's arithmetic makes.
    void AppendFloat(float value);
    void AppendFloats(std::span<const float> values);

    /// The characters of `magic` in reading order in both forms of the file.
    void AppendMagic(std::string_view magic);

    /// Writes the block to a binary stream: lays all items out, then goes back and fills in every
    /// offset, and leaves the stream at its end. A position that the stream cannot tell counts as
    /// 0. Throws a TextException for what is wrong with the block and an Exception when the stream
    /// did not take everything; the block may be written again.
    void Write(std::ostream& stream, std::uint32_t endian);

    /// The same at the current position of an open binary file, which stays open. The file need not
    /// be seekable. What was laid out before a failure is in the file.
    void WriteFile(std::FILE* stream, std::uint32_t endian);

    /// The same to a new file at `path`, or in place of the file there. Throws a TextException when
    /// it cannot be opened, and an Exception that names the path and the reason when it cannot be
    /// written whole; the file there is then as it was, for it is replaced in one step. Of a block
    /// with a fault in its layout, what was laid out becomes the file.
    void WriteToPath(const std::string& path, std::uint32_t endian);

    /// One of kEmptyBlock, kLeafBlock, kBlockOfBlocks.
    std::uint32_t kind = kEmptyBlock;

    /// Four characters that begin the directory behind the block; 0 for no directory.
    std::uint32_t tag = 0;

    /// How the directory states positions: kAbsolute or kRelative.
    std::uint32_t origin = kAbsolute;

    std::vector<std::unique_ptr<CWritable>> items;

    /// The multiple of bytes at which the block starts in the file.
    std::uint32_t alignment = 1;

    /// Where the last write put the block, and its length in bytes without the padding in front.
    std::uint32_t position = 0;
    std::uint32_t size = 0;

  private:
    friend class CNestedBlock;

    void WriteBody(std::ostream& stream, std::uint32_t endian);
    void WriteDirectory(std::ostream& stream, std::uint32_t endian);
    void WriteOwnDirectoryEntry(std::ostream& stream, std::uint32_t endian) const;
    void ResolveOffsets(std::ostream& stream, std::uint32_t endian) const;
    std::uint32_t CountNestedBlocks() const;
    std::uint32_t SizeAt(std::uint32_t start) const;
};

}  // namespace Biff
