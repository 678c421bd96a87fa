#include "Diff.h"
#include "LongestAscending.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <map>

using namespace Description;

namespace {

constexpr double kDegrees = 57.29577951308232;

/// For each joint of `skeleton` the one of `other`, -1 for none.
std::vector<int> MatchJoints(const Skeleton& skeleton, const Skeleton& other) {
    std::map<std::uint32_t, int> byHash;
    for (std::size_t i = 0; i < other.joints.size(); ++i)
        if (other.joints[i].hash) byHash.emplace(*other.joints[i].hash, static_cast<int>(i));
    std::vector<int> matches;
    for (std::size_t i = 0; i < skeleton.joints.size(); ++i) {
        const auto& hash = skeleton.joints[i].hash;
        if (hash) {
            const auto found = byHash.find(*hash);
            matches.push_back(found == byHash.end() ? -1 : found->second);
        } else {
            const bool isThere = i < other.joints.size() && !other.joints[i].hash;
            matches.push_back(isThere ? static_cast<int>(i) : -1);
        }
    }
    return matches;
}

double Square(double number) {
    return number * number;
}

/// The angle of the turn from one rotation to the other, of whichever length the quaternions are.
/// The vector part of their quotient is the sine of its half, and exact where the cosine is flat.
double AngleBetween(const Four& a, const Four& b) {
    const auto quotient = [&](std::size_t i, std::size_t j, std::size_t k) {
        const std::array<double, 4> p = {a[0], a[1], a[2], a[3]};
        const std::array<double, 4> q = {b[0], b[1], b[2], b[3]};
        return p[3] * q[i] - q[3] * p[i] - (p[j] * q[k] - p[k] * q[j]);
    };
    const double sine = std::sqrt(Square(quotient(0, 1, 2)) + Square(quotient(1, 2, 0)) +
                                  Square(quotient(2, 0, 1)));
    double cosine = 0;
    for (std::size_t i = 0; i < 4; ++i) cosine += static_cast<double>(a[i]) * b[i];
    const double angle = 2 * std::atan2(sine, std::fabs(cosine)) * kDegrees;
    // Of infinite numbers, which processors give signs of their own.
    return std::isnan(angle) ? std::numeric_limits<double>::quiet_NaN() : angle;
}

/// A nought has a sign.
template <class Numbers>
bool IsSame(const Numbers& a, const Numbers& b) {
    return std::equal(a.begin(), a.end(), b.begin(), [](float x, float y) {
        return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
    });
}

/// True where some number differs.
bool CompareTransforms(const Joint& a, const Joint& b, SkeletonDifference::Transform& difference) {
    double distance = 0, scale = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        // Also of what is infinite.
        if (b.translation[i] != a.translation[i])
            distance += Square(static_cast<double>(b.translation[i]) - a.translation[i]);
        scale = std::max(scale, std::fabs(static_cast<double>(b.scale[i]) - a.scale[i]));
    }
    difference.translation = static_cast<float>(std::sqrt(distance));
    if (a.rotation != b.rotation)
        difference.rotation = static_cast<float>(AngleBetween(a.rotation, b.rotation));
    difference.scale = static_cast<float>(scale);
    const auto compare = [&](const char* part, float amount, const auto& before,
                             const auto& after) {
        if (IsSame(before, after)) return true;
        if (!(amount > 0 && std::isfinite(amount)))
            difference.rewritten.push_back(
                {part, {before.begin(), before.end()}, {after.begin(), after.end()}});
        return false;
    };
    const bool isMoved =
        !compare("translation", difference.translation, a.translation, b.translation);
    const bool isTurned = !compare("rotation", difference.rotation, a.rotation, b.rotation);
    const bool isScaled = !compare("scale", difference.scale, a.scale, b.scale);
    return isMoved || isTurned || isScaled;
}

std::string LevelText(const LodRow& row) {
    return std::to_string(row.members) + " members, " + std::to_string(row.limit) +
           " joints left without it";
}

std::vector<SkeletonDifference::Fact> CompareLevels(const std::vector<LodRow>& before,
                                                    const std::vector<LodRow>& after) {
    const auto textOf = [](const std::vector<LodRow>& rows, std::size_t row) {
        return row < rows.size() ? std::optional(LevelText(rows[row])) : std::nullopt;
    };
    std::vector<SkeletonDifference::Fact> facts;
    for (std::size_t row = 0; row < std::max(before.size(), after.size()); ++row)
        if (textOf(before, row) != textOf(after, row))
            facts.push_back(
                {"row " + std::to_string(row), textOf(before, row), textOf(after, row)});
    return facts;
}

}  // namespace

bool SkeletonDifference::IsDescriptionSame() const {
    return isSameSignature && added.empty() && removed.empty() && moved.empty() &&
           reparented.empty() && flagged.empty() && releveled.empty() && transformed.empty() &&
           levels.empty() && procedural.empty() && order.empty();
}

SkeletonDifference Compare(const Skeleton& before, const Skeleton& after) {
    SkeletonDifference difference;
    difference.isSameSignature = before.signature == after.signature;
    const std::vector<int> toAfter = MatchJoints(before, after);
    const std::vector<int> toBefore = MatchJoints(after, before);
    for (std::size_t i = 0; i < toBefore.size(); ++i)
        if (toBefore[i] < 0) difference.added.push_back(static_cast<int>(i));

    std::vector<SkeletonDifference::Pair> common;
    std::vector<int> order;
    for (std::size_t i = 0; i < toAfter.size(); ++i) {
        if (toAfter[i] < 0) {
            difference.removed.push_back(static_cast<int>(i));
            continue;
        }
        common.push_back({static_cast<int>(i), toAfter[i]});
        order.push_back(toAfter[i]);
    }
    const std::vector<bool> isKept = LongestAscending(order);
    for (std::size_t i = 0; i < common.size(); ++i) {
        const SkeletonDifference::Pair pair = common[i];
        const Joint& a = before.joints[static_cast<std::size_t>(pair.before)];
        const Joint& b = after.joints[static_cast<std::size_t>(pair.after)];
        if (!isKept[i]) difference.moved.push_back(pair);
        const int parent = a.parent < 0 ? -1 : toAfter[static_cast<std::size_t>(a.parent)];
        if (parent != b.parent || (a.parent < 0) != (b.parent < 0))
            difference.reparented.push_back(pair);
        if (a.scaleCompensate != b.scaleCompensate) difference.flagged.push_back(pair);
        if (a.level != b.level) difference.releveled.push_back(pair);
        SkeletonDifference::Transform transform{pair};
        if (CompareTransforms(a, b, transform)) difference.transformed.push_back(transform);
    }
    difference.levels = CompareLevels(before.lods, after.lods);
    CompareProcedural(before, after, difference);
    return difference;
}

std::optional<std::size_t> FindOtherBytes(const SkeletonFile& before, const SkeletonFile& after) {
    const std::span<const char> a = before.Bytes(), b = after.Bytes();
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() && inB == b.end()) return std::nullopt;
    return static_cast<std::size_t>(inA - a.begin()) / 4 * 4;
}
