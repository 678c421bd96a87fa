#include "Diff.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <unordered_map>

using namespace Description;

namespace {

constexpr double kDegrees = 57.29577951308232;

/// For each joint of `skeleton` the one of `other`, -1 for none.
std::vector<int> MatchJoints(const Skeleton& skeleton, const Skeleton& other) {
    std::unordered_map<std::uint32_t, int> byHash;
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

/// Which of these numbers, no two alike, belong to a longest ascending run of them: the joints that
/// kept their order.
std::vector<bool> LongestAscending(const std::vector<int>& numbers) {
    std::vector<std::size_t> tails;  // the place of the lowest end of a run of each length
    std::vector<int> previous(numbers.size(), -1);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto at = std::lower_bound(
            tails.begin(), tails.end(), numbers[i],
            [&numbers](std::size_t place, int number) { return numbers[place] < number; });
        if (at != tails.begin()) previous[i] = static_cast<int>(*(at - 1));
        if (at == tails.end())
            tails.push_back(i);
        else
            *at = i;
    }
    std::vector<bool> isKept(numbers.size(), false);
    for (int i = tails.empty() ? -1 : static_cast<int>(tails.back()); i >= 0;
         i = previous[static_cast<std::size_t>(i)])
        isKept[static_cast<std::size_t>(i)] = true;
    return isKept;
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

using Facts = std::map<std::string, std::string>;

/// Two of one name get numbers: nothing is lost.
void AddFact(Facts& facts, const std::string& what, const std::string& numbers) {
    std::string name = what;
    for (int number = 2; !facts.emplace(name, numbers).second; ++number)
        name = what + " (" + std::to_string(number) + ")";
}

std::string TargetText(const Skeleton& skeleton, const Target& target, ConstraintKind kind) {
    std::string text = "weight " + NumberText(target.weight);
    if (kind == ConstraintKind::Translation || kind == ConstraintKind::Scale)
        text += ", offset " + VectorText(target.offset);
    if (kind == ConstraintKind::Aim)
        text += ", aim " + VectorText(target.aim) + ", up " + VectorText(target.up) +
                ", global up " + VectorText(target.globalUp) + ", world up " +
                std::to_string(target.worldUp) + ", up object " +
                LabelOf(skeleton, target.upObject);
    if (kind == ConstraintKind::Parent)
        text += ", translation " + VectorText(target.translation) + ", rotation " +
                VectorText(target.rotation);
    return text;
}

void AddFacts(const Skeleton& skeleton, const DrivenKeys& keys, const std::string& stage,
              Facts& facts) {
    for (const DrivenObject& object : keys.objects)
        AddFact(facts, "rotation of " + LabelOf(skeleton, object.joint) + " in driven keys",
                std::string("order ") + RotationOrderText(object.rotationOrder) + ", axis " +
                    VectorText(object.rotationAxis) + ", orient " + VectorText(object.jointOrient));
    for (const Output& output : keys.outputs)
        for (const Curve& curve : output.curves) {
            std::string text = stage + ", keys";
            for (std::size_t k = 0; k < curve.times.size(); ++k) {
                text += ' ' + NumberText(curve.times[k]);
                if (k < curve.coefficients.size()) text += ' ' + VectorText(curve.coefficients[k]);
            }
            AddFact(facts, output.target.label + " driven by " + curve.input.label, text);
        }
}

void AddFacts(const Skeleton& skeleton, const JointConstraints& item, const std::string& stage,
              Facts& facts) {
    for (const Constraint& constraint : item.constraints) {
        const std::string what = std::string(KindText(constraint.kind)) + " of " +
                                 LabelOf(skeleton, constraint.joint) + " by ";
        for (const Target& target : constraint.targets)
            AddFact(facts, what + LabelOf(skeleton, target.joint),
                    stage + ", " + TargetText(skeleton, target, constraint.kind));
    }
}

void AddFacts(const char* title, const std::vector<ExternalChannel>& channels, Facts& facts) {
    for (const ExternalChannel& channel : channels)
        AddFact(facts, title + channel.label, "kind " + std::to_string(channel.kind));
}

Facts ProceduralFacts(const Skeleton& skeleton) {
    Facts facts;
    AddFacts("external input ", skeleton.externalInputs, facts);
    AddFacts("external output ", skeleton.externalOutputs, facts);
    for (std::size_t i = 0; i < skeleton.items.size(); ++i) {
        const std::string stage = "item " + std::to_string(i);
        std::visit([&](const auto& item) { AddFacts(skeleton, item, stage, facts); },
                   skeleton.items[i]);
    }
    return facts;
}

Facts LevelFacts(const Skeleton& skeleton) {
    Facts facts;
    for (std::size_t i = 0; i < skeleton.lods.size(); ++i)
        facts.emplace("row " + std::to_string(i),
                      std::to_string(skeleton.lods[i].members) + " members, " +
                          std::to_string(skeleton.lods[i].limit) + " joints left without it");
    return facts;
}

std::vector<SkeletonDifference::Fact> CompareFacts(const Facts& before, const Facts& after) {
    std::vector<SkeletonDifference::Fact> facts;
    for (const auto& [what, numbers] : before) {
        const auto found = after.find(what);
        if (found == after.end())
            facts.push_back({what, numbers, std::nullopt});
        else if (found->second != numbers)
            facts.push_back({what, numbers, found->second});
    }
    for (const auto& [what, numbers] : after)
        if (!before.contains(what)) facts.push_back({what, std::nullopt, numbers});
    std::stable_sort(facts.begin(), facts.end(),
                     [](const auto& a, const auto& b) { return a.what < b.what; });
    return facts;
}

}  // namespace

bool SkeletonDifference::IsEmpty() const {
    return isSameSignature && added.empty() && removed.empty() && moved.empty() &&
           reparented.empty() && flagged.empty() && releveled.empty() && transformed.empty() &&
           levels.empty() && procedural.empty();
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
    difference.levels = CompareFacts(LevelFacts(before), LevelFacts(after));
    difference.procedural = CompareFacts(ProceduralFacts(before), ProceduralFacts(after));
    return difference;
}
