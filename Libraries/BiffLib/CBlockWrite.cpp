#include <BiffLib/CBlock.h>
#include <BiffLib/CNestedBlock.h>

#include <array>
#include <cstring>
#include <ostream>

#include "LabelTable.h"
#include "StreamWords.h"

namespace Biff {

namespace {

constexpr std::uint32_t kWord = 4;
constexpr std::uint32_t kDirectoryAlignment = 4;
constexpr std::uint32_t kBlockOfBlocksMark = 0xFFFFFFFFu;
constexpr std::uint32_t kNestedEntrySize = 12;

// A tag is four characters, not a number: the same in both forms of the file.
void WriteTag(std::ostream& stream, std::uint32_t tag) {
    std::array<char, kWord> characters;
    std::memcpy(characters.data(), &tag, characters.size());
    stream.write(characters.data(), characters.size());
}

}  // namespace

void CBlock::Write(std::ostream& stream, std::uint32_t endian) {
    LabelTable::Clear();
    const bool tellsPosition = stream.tellp() != std::ostream::pos_type(-1);
    WriteBody(stream, endian);
    if (tag != 0) WriteDirectory(stream, endian);
    stream.flush();
    CheckStream(stream);
    ResolveOffsets(stream, endian);
    if (tellsPosition) stream.seekp(0, std::ios_base::end);
    stream.flush();
    CheckStream(stream);
    LabelTable::Clear();
}

void CBlock::WriteBody(std::ostream& stream, std::uint32_t endian) {
    Pad(stream, alignment);
    position = PositionOf(stream);
    for (const auto& item : items) item->Write(stream, endian);
    size = PositionOf(stream) - position;
}

void CBlock::WriteDirectory(std::ostream& stream, std::uint32_t endian) {
    Pad(stream, kDirectoryAlignment);
    const std::uint32_t directory = PositionOf(stream);
    WriteOwnDirectoryEntry(stream, endian);
    const std::uint32_t from = origin == kRelative ? PositionOf(stream) : 0;
    WriteNumber(stream, directory - from, kWord, endian);
}

void CBlock::WriteOwnDirectoryEntry(std::ostream& stream, std::uint32_t endian) const {
    WriteTag(stream, tag);
    if (kind == kBlockOfBlocks) {
        WriteNumber(stream, kBlockOfBlocksMark, kWord, endian);
        WriteNumber(stream, kNestedEntrySize * CountNestedBlocks(), kWord, endian);
        for (const auto& item : items) item->WriteDirectoryEntry(stream, endian, origin);
        return;
    }
    if (origin == kAbsolute) WriteNumber(stream, position, kWord, endian);
    if (origin == kRelative) WriteNumber(stream, position - PositionOf(stream), kWord, endian);
    WriteNumber(stream, size, kWord, endian);
}

void CBlock::ResolveOffsets(std::ostream& stream, std::uint32_t endian) const {
    for (const auto& item : items) {
        if (item->type == kOffsetItem)
            static_cast<const COffset&>(*item).Resolve(stream, endian);
        else if (item->type == kNestedBlockItem)
            static_cast<const CNestedBlock&>(*item).block->ResolveOffsets(stream, endian);
    }
}

std::uint32_t CBlock::CountNestedBlocks() const {
    std::uint32_t count = 0;
    for (const auto& item : items) {
        if (item->type != kNestedBlockItem) continue;
        count += 1 + static_cast<const CNestedBlock&>(*item).block->CountNestedBlocks();
    }
    return count;
}

std::uint32_t CBlock::SizeAt(std::uint32_t start) const {
    std::uint32_t end = start + PaddingAt(start, alignment);
    for (const auto& item : items) end += item->SizeAt(end);
    return end - start;
}

}  // namespace Biff
