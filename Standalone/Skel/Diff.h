#pragma once

#include "Description.h"
#include "Dump.h"

#include <iosfwd>

/// What one skeleton has otherwise than another.
struct SkeletonDifference {
    struct Pair {
        int before, after;  ///< joint indices in the first and the second
    };
    struct Rewriting {
        const char* part;  ///< "rotation"
        std::vector<float> before, after;
    };
    struct Transform {
        Pair joint;
        float translation = 0;  ///< distance, in the scene's units
        float rotation = 0;     ///< angle, in degrees
        float scale = 0;        ///< the largest difference of the three numbers
        /// What has other numbers without an amount: a quaternion of another length or sign, a
        /// nought of another sign, a number that is infinite.
        std::vector<Rewriting> rewritten = {};
    };
    struct Fact {
        std::string what;                          ///< "aim of Eye towards Hand"
        std::optional<std::string> before, after;  ///< its numbers; none where it does not exist
    };

    bool isSameSignature = true;
    std::vector<int> added;    ///< indices in the second
    std::vector<int> removed;  ///< indices in the first
    std::vector<Pair> moved;   ///< in another order among the joints of both
    std::vector<Pair> reparented;
    std::vector<Pair> flagged;    ///< other in scale compensation
    std::vector<Pair> releveled;  ///< dropped with another row
    std::vector<Transform> transformed;
    std::vector<Fact> levels;      ///< rows of the level of detail table
    std::vector<Fact> procedural;  ///< external channels, targets of constraints, curves
    /// Targets and curves of both that are evaluated in another order, or in another constraint,
    /// output or item than what is in front of them; `before` and `after` are their places.
    std::vector<Fact> order;
    /// Where the files differ in one byte order; not set by Compare. What it alone tells is in
    /// nothing that a skeleton is described by.
    std::optional<std::size_t> otherBytesAt;

    /// Nothing differs but bytes that no description shows.
    bool IsDescriptionSame() const;
    bool IsEmpty() const { return IsDescriptionSame() && !otherBytesAt; }
};

/// Joints are the same where their hashes are; those without one, where their indices are.
SkeletonDifference Compare(const Description::Skeleton& before, const Description::Skeleton& after);
/// The part of it that deals with items.
void CompareProcedural(const Description::Skeleton& before, const Description::Skeleton& after,
                       SkeletonDifference& difference);
/// Where the first four bytes stand that differ when both are in one byte order, the same on every
/// machine. The places of tables and what stands between them follow from what the tables hold, so
/// that equal skeletons have equal bytes.
std::optional<std::size_t> FindOtherBytes(const SkeletonFile& before, const SkeletonFile& after);

/// docs/skel-diff.schema.json tells the form.
Json DiffJson(const SkeletonDifference& difference, const Description::Skeleton& before,
              const Description::Skeleton& after);
void DiffText(const SkeletonDifference& difference, const Description::Skeleton& before,
              const Description::Skeleton& after, std::ostream& out);
