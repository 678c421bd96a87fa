#pragma once

#include <BiffLib/CBlock.h>
#include <BiffLib/CWritable.h>

#include <memory>

namespace Biff {

/// A block that stands as an item of another one, with labels and offsets of the same file.
class CNestedBlock final : public CWritable {
  public:
    explicit CNestedBlock(std::unique_ptr<CBlock> content);

    void Write(std::ostream& stream, std::uint32_t endian) override;
    std::uint32_t SizeAt(std::uint32_t position) const override;

    /// Never null.
    const std::unique_ptr<CBlock> block;
};

}  // namespace Biff
