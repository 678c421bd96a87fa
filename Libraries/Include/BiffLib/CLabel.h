#pragma once

#include <BiffLib/CWritable.h>

namespace Biff {

/// Returns a label number that nobody else has. It may be named by offsets before and after it is
/// appended to a block, and need not be appended at all.
std::uint32_t ReserveLabel();

/// Names the current file position; occupies no bytes.
class CLabel final : public CWritable {
  public:
    explicit CLabel(std::uint32_t number) : CWritable(kLabelItem), label(number) {}

    /// Enters the stream's position in the label table. Throws a TextException when the label
    /// stands there already.
    void Write(std::ostream& stream, std::uint32_t endian) override;
    std::uint32_t SizeAt(std::uint32_t position) const override;

    const std::uint32_t label;
};

}  // namespace Biff
