#include "Diff.h"

#include <array>
#include <ostream>

using namespace Description;
using Pair = SkeletonDifference::Pair;

namespace {

const Joint& JointAt(const Skeleton& skeleton, int index) {
    return skeleton.joints[static_cast<std::size_t>(index)];
}

std::string PlaceText(const Skeleton& skeleton, int index) {
    return LabelOf(skeleton, index) + " (" + std::to_string(index) + ")";
}

/// Prints the lines of one kind of difference; `line` gives the words behind the joint.
template <class List, class Line>
void PrintList(const char* title, const List& list, std::ostream& out, const Line& line) {
    if (list.empty()) return;
    out << title << ' ' << list.size() << '\n';
    for (const auto& entry : list) out << "  " << line(entry) << '\n';
}

void PrintFacts(const char* title, const std::vector<SkeletonDifference::Fact>& facts,
                std::ostream& out) {
    PrintList(title, facts, out, [](const SkeletonDifference::Fact& fact) {
        if (!fact.before) return "+ " + fact.what + ": " + *fact.after;
        if (!fact.after) return "- " + fact.what + ": " + *fact.before;
        return "! " + fact.what + ":\n      " + *fact.before + "\n      " + *fact.after;
    });
}

std::string TransformText(const SkeletonDifference::Transform& transform) {
    std::string text = " moved by " + NumberText(transform.translation) + ", turned by " +
                       NumberText(transform.rotation) + " degrees, scaled by " +
                       NumberText(transform.scale);
    for (const SkeletonDifference::Rewriting& rewriting : transform.rewritten)
        text += std::string("\n      ") + rewriting.part + " " + VectorText(rewriting.before) +
                " became " + VectorText(rewriting.after);
    return text;
}

Json PairJson(const Pair& pair, const Skeleton& before, const Skeleton& after) {
    const Joint& joint = JointAt(after, pair.after);
    Json json = {{"name", joint.name ? Json(*joint.name) : Json(nullptr)},
                 {"hash", joint.hash ? Json(HashText(*joint.hash)) : Json(nullptr)},
                 {"before", pair.before},
                 {"after", pair.after}};
    if (!joint.name && JointAt(before, pair.before).name)
        json["name"] = *JointAt(before, pair.before).name;
    return json;
}

Json JointJson(const Skeleton& skeleton, int index) {
    const Joint& joint = JointAt(skeleton, index);
    return {{"name", joint.name ? Json(*joint.name) : Json(nullptr)},
            {"hash", joint.hash ? Json(HashText(*joint.hash)) : Json(nullptr)},
            {"index", index}};
}

Json FactsJson(const std::vector<SkeletonDifference::Fact>& facts) {
    Json json = Json::array();
    for (const SkeletonDifference::Fact& fact : facts)
        json.push_back({{"what", fact.what},
                        {"before", fact.before ? Json(*fact.before) : Json(nullptr)},
                        {"after", fact.after ? Json(*fact.after) : Json(nullptr)}});
    return json;
}

}  // namespace

Json DiffJson(const SkeletonDifference& difference, const Skeleton& before, const Skeleton& after) {
    const auto joints = [](const std::vector<int>& indices, const Skeleton& skeleton) {
        Json list = Json::array();
        for (const int index : indices) list.push_back(JointJson(skeleton, index));
        return list;
    };
    const auto pairs = [&](const std::vector<Pair>& from) {
        Json list = Json::array();
        for (const Pair& pair : from) list.push_back(PairJson(pair, before, after));
        return list;
    };
    Json reparented = pairs(difference.reparented);
    for (std::size_t i = 0; i < difference.reparented.size(); ++i) {
        const Pair& pair = difference.reparented[i];
        const int from = JointAt(before, pair.before).parent;
        const int to = JointAt(after, pair.after).parent;
        reparented[i]["parentBefore"] = from < 0 ? Json(nullptr) : JointJson(before, from);
        reparented[i]["parentAfter"] = to < 0 ? Json(nullptr) : JointJson(after, to);
    }
    Json transformed = Json::array();
    for (const SkeletonDifference::Transform& transform : difference.transformed) {
        Json entry = PairJson(transform.joint, before, after);
        entry["translation"] = transform.translation;
        entry["rotationDegrees"] = transform.rotation;
        entry["scale"] = transform.scale;
        entry["rewritten"] = Json::array();
        for (const SkeletonDifference::Rewriting& rewriting : transform.rewritten)
            entry["rewritten"].push_back({{"part", rewriting.part},
                                          {"before", rewriting.before},
                                          {"after", rewriting.after}});
        transformed.push_back(std::move(entry));
    }
    return {
        {"same", difference.IsEmpty()},
        {"sameSignature", difference.isSameSignature},
        {"signatures", std::array{HashText(before.signature), HashText(after.signature)}},
        {"added", joints(difference.added, after)},
        {"removed", joints(difference.removed, before)},
        {"moved", pairs(difference.moved)},
        {"reparented", std::move(reparented)},
        {"scaleCompensation", pairs(difference.flagged)},
        {"levels", pairs(difference.releveled)},
        {"transformed", std::move(transformed)},
        {"levelsOfDetail", FactsJson(difference.levels)},
        {"procedural", FactsJson(difference.procedural)},
        {"order", FactsJson(difference.order)},
        {"otherBytesAt", difference.otherBytesAt ? Json(*difference.otherBytesAt) : Json(nullptr)}};
}

void DiffText(const SkeletonDifference& difference, const Skeleton& before, const Skeleton& after,
              std::ostream& out) {
    if (difference.isSameSignature)
        out << "signature " << HashText(before.signature)
            << " is the same: animation made for the first fits the second\n";
    else
        out << "signature " << HashText(before.signature) << " became " << HashText(after.signature)
            << ": animation made for the first does not fit the second\n";
    PrintList("added", difference.added, out, [&](int joint) { return PlaceText(after, joint); });
    PrintList("removed", difference.removed, out,
              [&](int joint) { return PlaceText(before, joint); });
    PrintList("moved in order", difference.moved, out, [&](const Pair& pair) {
        return LabelOf(after, pair.after) + " from " + std::to_string(pair.before) + " to " +
               std::to_string(pair.after);
    });
    PrintList("reparented", difference.reparented, out, [&](const Pair& pair) {
        return PlaceText(after, pair.after) + " from " +
               LabelOf(before, JointAt(before, pair.before).parent) + " to " +
               LabelOf(after, JointAt(after, pair.after).parent);
    });
    PrintList("scale compensation", difference.flagged, out, [&](const Pair& pair) {
        return PlaceText(after, pair.after) +
               (JointAt(after, pair.after).scaleCompensate ? " now has it" : " lost it");
    });
    PrintList("level of detail", difference.releveled, out, [&](const Pair& pair) {
        return PlaceText(after, pair.after) + " from level " +
               std::to_string(JointAt(before, pair.before).level) + " to " +
               std::to_string(JointAt(after, pair.after).level);
    });
    PrintList("transform", difference.transformed, out,
              [&](const SkeletonDifference::Transform& transform) {
                  return PlaceText(after, transform.joint.after) + TransformText(transform);
              });
    PrintFacts("levels of detail", difference.levels, out);
    PrintFacts("procedural", difference.procedural, out);
    PrintFacts("order of evaluation", difference.order, out);
    if (difference.IsEmpty())
        out << "no differences\n";
    else if (difference.IsDescriptionSame())
        out << "other bytes from " << OffsetText(*difference.otherBytesAt)
            << " on, though all that is compared joint by joint and item by item is the same\n";
}
