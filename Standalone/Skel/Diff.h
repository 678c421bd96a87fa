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
    std::vector<Fact> procedural;  ///< items, constraints and curves

    bool IsEmpty() const;
};

/// Joints are the same where their hashes are; those without one, where their indices are.
SkeletonDifference Compare(const Description::Skeleton& before, const Description::Skeleton& after);

/// docs/skel-diff.schema.json tells the form.
Json DiffJson(const SkeletonDifference& difference, const Description::Skeleton& before,
              const Description::Skeleton& after);
void DiffText(const SkeletonDifference& difference, const Description::Skeleton& before,
              const Description::Skeleton& after, std::ostream& out);
