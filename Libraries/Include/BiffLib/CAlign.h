#pragma once

#include <BiffLib/CWritable.h>

namespace Biff {

/// Zero bytes up to the next multiple of `alignment` in the file. An alignment of 0 pads nothing,
/// as 1 does.
class CAlign final : public CWritable {
  public:
    explicit CAlign(std::uint32_t multiple) : CWritable(kAlignItem), alignment(multiple) {}

    void Write(std::ostream& stream, std::uint32_t endian) override;
    std::uint32_t SizeAt(std::uint32_t position) const override;

    const std::uint32_t alignment;
};

}  // namespace Biff
