#pragma once

#include <BiffLib/BiffTypes.h>

#include <cstdint>
#include <iosfwd>

namespace Biff {

/// Base of everything that stands in a block. The block owns its items.
class CWritable {
  public:
    virtual ~CWritable() = default;
    CWritable(const CWritable&) = delete;
    CWritable& operator=(const CWritable&) = delete;

    /// Writes the item at the stream's current position. A stream that refuses bytes is not looked
    /// at here.
    virtual void Write(std::ostream& stream, std::uint32_t endian) = 0;

    /// Writes what the item adds to the directory of a block of blocks: nothing, unless a class
    /// says otherwise.
    virtual void WriteDirectoryEntry(std::ostream& stream, std::uint32_t endian,
                                     std::uint32_t origin);

    /// How many bytes the item occupies when it starts at `position`.
    virtual std::uint32_t SizeAt(std::uint32_t position) const = 0;

    const std::uint32_t type;

  protected:
    explicit CWritable(std::uint32_t itemType) : type(itemType) {}
};

}  // namespace Biff
