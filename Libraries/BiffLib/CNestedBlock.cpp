#include <BiffLib/CNestedBlock.h>

#include <utility>

namespace Biff {

CNestedBlock::CNestedBlock(std::unique_ptr<CBlock> content)
    : CWritable(kNestedBlockItem), block(std::move(content)) {}

void CNestedBlock::Write(std::ostream& stream, std::uint32_t endian) {
    block->WriteBody(stream, endian);
}

std::uint32_t CNestedBlock::SizeAt(std::uint32_t position) const {
    return block->SizeAt(position);
}

}  // namespace Biff
