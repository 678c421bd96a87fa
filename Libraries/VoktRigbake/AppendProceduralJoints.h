#pragma once

namespace Biff {
class CBlock;
}
struct ProceduralJoints;

/// Appends the "PJ01" block; `block` stands at a multiple of 16.
void AppendProceduralJoints(const ProceduralJoints& procedural, Biff::CBlock& block);
