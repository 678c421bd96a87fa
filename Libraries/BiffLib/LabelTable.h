#pragma once

#include <cstdint>

/// Where the labels of the write in progress came to stand.
namespace Biff::LabelTable {

void Clear();

/// Throws a TextException when the label is in the table already.
void Enter(std::uint32_t label, std::uint32_t position);

bool Contains(std::uint32_t label);

/// Throws a TextException when the label is not in the table.
std::uint32_t PositionOfLabel(std::uint32_t label);

}  // namespace Biff::LabelTable
