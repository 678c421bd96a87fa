#pragma once

namespace Biff {
class CBlock;
}
struct ProceduralJoints;
struct SkeletonData;

/// Appends the "PJ01" block; `block` stands at a multiple of 16.
void WriteProceduralJoints(const ProceduralJoints& procedural, const SkeletonData& skeleton,
                           Biff::CBlock& block);
