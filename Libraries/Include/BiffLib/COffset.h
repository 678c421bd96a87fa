#pragma once

#include <BiffLib/CWritable.h>

namespace Biff {

/// A reference to a label: `storage` bytes that say how many strides lie between the origin and the
/// label.
class COffset final : public CWritable {
  public:
    /// Throws a TextException unless `storage` is 1 to 4 bytes and `stride` at least 1 byte.
    COffset(std::uint32_t targetLabel, std::uint32_t from, std::uint32_t bytes,
            std::uint32_t strideBytes);

    /// Notes the position and writes placeholder bytes: 0xFF for an absolute offset, 0x00 for a
    /// relative one. Throws a TextException for another origin.
    void Write(std::ostream& stream, std::uint32_t endian) override;
    std::uint32_t SizeAt(std::uint32_t position) const override;

    /// Replaces the placeholder by the number, the labels being known now. An offset to a label
    /// that was not written keeps its placeholder. Throws a TextException when the target is not a
    /// multiple of the stride or the number does not fit.
    void Resolve(std::ostream& stream, std::uint32_t endian) const;

    const std::uint32_t label;
    std::uint32_t position = 0;
    const std::uint32_t origin;
    const std::uint32_t storage;
    const std::uint32_t stride;
};

}  // namespace Biff
