#pragma once

#include <VoktRigbake/Skeleton/SkeletonIndex.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <unordered_set>
#include <vector>

namespace Biff {
class CBlock;
}
class VokConstraint;

/// One target of a constraint.
struct ConstraintItem {
    static constexpr std::uint32_t kFirstTarget = 1;
    static constexpr std::uint32_t kLastTarget = 2;

    std::uint32_t flags = 0;  ///< kFirstTarget, kLastTarget, both or none
    std::uint32_t targetIndex = 0;
    const VokConstraint* constraint = nullptr;  ///< the scene's, not owned
};

/// The constraints of one stage of the procedural evaluation. A run-time evaluates them in one go:
/// only joints take part, and no joint is both driven and read. Points into the scene and must not
/// outlive it.
class JointConstraints {
  public:
    /// Adds one item for each target of `constraint`. Throws a QelTools Exception, with the
    /// constraints that were added before in place, for null, for an object that is no joint of the
    /// skeleton, for a constraint that reads what it drives, or what another one of the block
    /// drives, or that drives what another one reads, and for a type that no block holds.
    void AddConstraint(const VokConstraint* constraint, const SkeletonIndex& skeleton);

    bool IsEmpty() const;

    /// Appends the "JC01" block; `block` stands at a multiple of 16. Throws a QelTools Exception
    /// for an aim constraint without a world up method and for an orientation constraint whose
    /// interpolation is not the average, a VokException for a parent constraint with fewer offsets
    /// than targets.
    void Write(Biff::CBlock& block, const SkeletonIndex& skeleton) const;

    std::vector<ConstraintItem> translationItems;
    std::vector<ConstraintItem> orientationItems;
    std::vector<ConstraintItem> aimItems;
    std::vector<ConstraintItem> parentItems;
    std::vector<ConstraintItem> scaleItems;
    std::set<std::int32_t> targetJoints;       ///< read, up objects included
    std::set<std::int32_t> constrainedJoints;  ///< written

  private:
    void Validate(const VokConstraint* constraint, const SkeletonIndex& skeleton) const;
    std::vector<ConstraintItem>& ItemsFor(const VokConstraint& constraint);

    // For the checks alone; never walked.
    std::unordered_set<const VokObj*> constrainedObjects;
    std::unordered_set<const VokObj*> targetObjects;
};
