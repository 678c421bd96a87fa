#pragma once

#include <cstddef>
#include <cstdint>

namespace Biff {
class CBlock;
}
struct ProceduralJoints;
struct SkeletonData;

/// What a skeleton is made for. One for animation is held to kMaxAnimationJoints.
inline constexpr std::uint32_t kSkeletonForAnimation = 1;
inline constexpr std::size_t kMaxAnimationJoints = 128;

/// Appends the whole skeleton file to the empty `block`, which keeps a copy of all it needs.
/// `procedural` may be null. False, with nothing appended, for a skeleton without joints. Throws a
/// VokException, with nothing appended, for more joints than `skeletonUse` allows.
bool WriteSkeleton(const SkeletonData& skeleton, Biff::CBlock& block,
                   const ProceduralJoints* procedural,
                   std::uint32_t skeletonUse = kSkeletonForAnimation);
