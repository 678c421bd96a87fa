#pragma once

#include <cstdint>
#include <vector>

struct SkeletonData;

/// For each joint the nearest one at or above it in the tree whose index is below `limit`: what
/// stands in for it when the joints from `limit` on are cut off. 0xFFFF where there is none, and
/// for every joint with a limit below 1.
std::vector<std::uint16_t> MakeLodRemap(const SkeletonData& skeleton, std::int64_t limit);
