#pragma once

#include <BiffLib/CBlock.h>

#include <cstdint>

/// Tables start on addresses that vector loads can use in place.
inline constexpr std::uint32_t kTableAlignment = 16;

/// Appends a reference as every table of the file has it: a signed distance of four bytes from its
/// own first byte.
inline void AppendRelativeOffset(Biff::CBlock& block, std::uint32_t label) {
    block.AppendOffset(label, Biff::kRelative, 4, 1);
}

/// Pads to the next table and gives it its label.
inline void BeginTable(Biff::CBlock& block, std::uint32_t label) {
    block.AppendAlign(kTableAlignment);
    block.AppendLabel(label);
}
