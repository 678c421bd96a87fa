#include "Diff.h"
#include "EvaluationSteps.h"
#include "LongestAscending.h"

#include <algorithm>
#include <map>
#include <string_view>

using namespace Description;
using Fact = SkeletonDifference::Fact;

namespace {

/// The skeletons' steps, and which of them are the same.
struct StepLists {
    struct Pair {
        std::size_t before, after;
    };
    std::vector<EvaluationStep> before, after;
    std::vector<Pair> common;  // by ascending place in the first
    std::vector<bool> isGone, isNew;
};

/// Of steps that are alike the first is the first, and so on; further ones have a number.
std::map<std::string, std::size_t> NumberAlike(std::vector<EvaluationStep>& steps) {
    std::map<std::string, int> counts;
    std::map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const int number = ++counts[steps[i].key];
        if (number > 1) steps[i].what += " (" + std::to_string(number) + ")";
        steps[i].key += " " + std::to_string(number);
        places.emplace(steps[i].key, i);
    }
    return places;
}

StepLists MatchSteps(const Skeleton& before, const Skeleton& after) {
    StepLists lists{EvaluationSteps(before), EvaluationSteps(after), {}, {}, {}};
    NumberAlike(lists.before);
    const auto places = NumberAlike(lists.after);
    lists.isGone.assign(lists.before.size(), true);
    lists.isNew.assign(lists.after.size(), true);
    for (std::size_t i = 0; i < lists.before.size(); ++i) {
        const auto found = places.find(lists.before[i].key);
        if (found == places.end()) continue;
        lists.isGone[i] = lists.isNew[found->second] = false;
        lists.common.push_back({i, found->second});
    }
    return lists;
}

std::string NumbersText(const EvaluationStep& step) {
    return "item " + std::to_string(step.item) + ", " + step.numbers;
}

void CompareNumbers(const StepLists& lists, std::vector<Fact>& facts) {
    for (const auto [i, k] : lists.common) {
        const EvaluationStep &a = lists.before[i], &b = lists.after[k];
        if (a.numbers != b.numbers || a.exact != b.exact)
            facts.push_back({b.what, NumbersText(a), NumbersText(b)});
    }
    for (std::size_t i = 0; i < lists.before.size(); ++i)
        if (lists.isGone[i])
            facts.push_back({lists.before[i].what, NumbersText(lists.before[i]), std::nullopt});
    for (std::size_t i = 0; i < lists.after.size(); ++i)
        if (lists.isNew[i])
            facts.push_back({lists.after[i].what, std::nullopt, NumbersText(lists.after[i])});
}

/// How a step stands to one in front of it.
enum class Relation { OneGroup, OneItem, LaterItem };

Relation RelationOf(const EvaluationStep& first, const EvaluationStep& second) {
    if (first.item != second.item) return Relation::LaterItem;
    return first.group == second.group ? Relation::OneGroup : Relation::OneItem;
}

/// In both the one stands right behind the other, in one constraint or output: they go together.
bool IsBehind(const StepLists& lists, std::size_t number, std::size_t next) {
    const StepLists::Pair &a = lists.common[number], &b = lists.common[next];
    return b.before == a.before + 1 && b.after == a.after + 1 &&
           RelationOf(lists.before[a.before], lists.before[b.before]) == Relation::OneGroup &&
           RelationOf(lists.after[a.after], lists.after[b.after]) == Relation::OneGroup;
}

/// Steps that both have are in the same order, constraint by constraint and item by item. Numbers
/// of items and places say nothing alone: one that came or went moves those of all behind it.
std::vector<Fact> CompareOrder(const StepLists& lists) {
    std::vector<int> order;
    for (const auto [i, k] : lists.common) order.push_back(static_cast<int>(k));
    std::vector<bool> isTold = LongestAscending(order);
    isTold.flip();
    const StepLists::Pair* last = nullptr;
    std::size_t lastNumber = 0;
    for (std::size_t number = 0; number < lists.common.size(); ++number) {
        if (isTold[number]) continue;
        const StepLists::Pair& pair = lists.common[number];
        if (last != nullptr && RelationOf(lists.before[last->before], lists.before[pair.before]) !=
                                   RelationOf(lists.after[last->after], lists.after[pair.after])) {
            const bool isMoved =
                lists.before[pair.before].placeText != lists.after[pair.after].placeText;
            isTold[isMoved ? number : lastNumber] = true;
        }
        last = &pair;
        lastNumber = number;
    }
    std::vector<Fact> facts;
    for (std::size_t number = 0; number < lists.common.size(); ++number) {
        const auto [i, k] = lists.common[number];
        if (isTold[number] &&
            !(number > 0 && isTold[number - 1] && IsBehind(lists, number - 1, number)))
            facts.push_back(
                {lists.after[k].what, lists.before[i].placeText, lists.after[k].placeText});
    }
    return facts;
}

/// Both are in the order of their hashes.
void CompareExternals(const std::string& title, const std::vector<ExternalChannel>& before,
                      const std::vector<ExternalChannel>& after, std::vector<Fact>& facts) {
    const auto kindOf = [](const ExternalChannel& channel) {
        return std::string(ExternalKindText(channel.kind));
    };
    auto a = before.begin(), b = after.begin();
    while (a != before.end() || b != after.end()) {
        if (b == after.end() || (a != before.end() && a->hash < b->hash)) {
            facts.push_back({title + a->label, kindOf(*a), std::nullopt});
            ++a;
        } else if (a == before.end() || b->hash < a->hash) {
            facts.push_back({title + b->label, std::nullopt, kindOf(*b)});
            ++b;
        } else {
            if (a->kind != b->kind) facts.push_back({title + b->label, kindOf(*a), kindOf(*b)});
            ++a;
            ++b;
        }
    }
}

/// Numbers within a name count as such: 2 comes before 10.
bool ComesBefore(const std::string& a, const std::string& b) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto numberAt = [&](const std::string& text, std::size_t at) {
        std::size_t end = at;
        while (end < text.size() && isDigit(text[end])) ++end;
        while (at + 1 < end && text[at] == '0') ++at;
        return std::string_view(text).substr(at, end - at);
    };
    const std::size_t length = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at < length && a[at] == b[at]) ++at;
    while (at > 0 && isDigit(a[at - 1])) --at;
    if (at < length && isDigit(a[at]) && isDigit(b[at])) {
        const std::string_view x = numberAt(a, at), y = numberAt(b, at);
        if (x != y) return x.size() != y.size() ? x.size() < y.size() : x < y;
    }
    return a < b;
}

}  // namespace

void CompareProcedural(const Skeleton& before, const Skeleton& after,
                       SkeletonDifference& difference) {
    const StepLists lists = MatchSteps(before, after);
    CompareExternals("external input ", before.externalInputs, after.externalInputs,
                     difference.procedural);
    CompareExternals("external output ", before.externalOutputs, after.externalOutputs,
                     difference.procedural);
    CompareNumbers(lists, difference.procedural);
    std::stable_sort(difference.procedural.begin(), difference.procedural.end(),
                     [](const Fact& a, const Fact& b) { return ComesBefore(a.what, b.what); });
    difference.order = CompareOrder(lists);
}
