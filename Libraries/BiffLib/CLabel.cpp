#include <BiffLib/CLabel.h>

#include "LabelTable.h"
#include "StreamWords.h"

namespace Biff {

namespace {

constexpr std::uint32_t kFirstLabel = 15;

}  // namespace

std::uint32_t ReserveLabel() {
    static std::uint32_t next = kFirstLabel;
    return next++;
}

void CLabel::Write(std::ostream& stream, std::uint32_t) {
    LabelTable::Enter(label, PositionOf(stream));
}

std::uint32_t CLabel::SizeAt(std::uint32_t) const {
    return 0;
}

}  // namespace Biff
