#pragma once

#include <BiffLib/CWritable.h>

#include <vector>

namespace Biff {

/// Bytes in the host's order with a record of the sizes of their elements, so that they can be
/// written in the other order. The lengths of the runs add up to the length of the bytes.
class CData final : public CWritable {
  public:
    struct Run {
        std::uint32_t elementSize;
        std::uint32_t count;
    };

    /// No element is larger than this.
    static constexpr std::uint32_t kMaxElementSize = 16;

    CData() : CWritable(kDataItem) {}

    /// Every element is reversed as one unit where the file's byte order is not the host's.
    void Write(std::ostream& stream, std::uint32_t endian) override;
    std::uint32_t SizeAt(std::uint32_t position) const override;

    std::vector<std::uint8_t> bytes;
    std::vector<Run> runs;
};

}  // namespace Biff
