#include <BiffLib/CAlign.h>

#include "StreamWords.h"

namespace Biff {

void CAlign::Write(std::ostream& stream, std::uint32_t) {
    Pad(stream, alignment);
}

std::uint32_t CAlign::SizeAt(std::uint32_t position) const {
    return PaddingAt(position, alignment);
}

}  // namespace Biff
