#include "VoktRigbake/NaiveSkeleton.h"

#include <algorithm>
#include <map>

std::uint32_t NaiveHash(std::string_view text) {
    std::uint32_t value = 0xFFFFFFFFu;
    for (const char c : text) {
        value ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1u) != 0 ? (value >> 1) ^ 0xEDB88320u : value >> 1;
    }
    return value;
}

std::string NaiveTree::PathOf(int joint) const {
    std::string path;
    for (; joint >= 0; joint = parents[static_cast<std::size_t>(joint)])
        path.insert(0, "|j" + std::to_string(joint));
    return "|" + path;
}

std::string NaiveTree::Document() const {
    std::string text = "<scene>";
    std::vector<int> open;
    for (int i = 0; i < static_cast<int>(parents.size()); ++i) {
        while (!open.empty() && open.back() != parents[static_cast<std::size_t>(i)]) {
            text += "</joint>";
            open.pop_back();
        }
        text += "<joint name=\"j" + std::to_string(i) + "\">";
        open.push_back(i);
    }
    for (std::size_t i = 0; i < open.size(); ++i) text += "</joint>";
    text += "</scene>";
    std::map<int, std::string> members;
    for (int i = 0; i < static_cast<int>(levels.size()); ++i)
        if (const int level = levels[static_cast<std::size_t>(i)]; level > 0)
            members[level] += "<member path=\"" + PathOf(i) + "\" membership=\"\"/>";
    // The finest set first: the sets' order in the document must not matter.
    for (auto it = members.rbegin(); it != members.rend(); ++it)
        text += "<objset name=\"skelLodSet" + std::to_string(it->first) + "\" type=\"set\">" +
                it->second + "</objset>";
    return text;
}

NaiveSkeleton NaiveTree::Number() const {
    const auto count = static_cast<int>(parents.size());
    std::vector<int> index(parents.size(), -1);
    int next = count;
    for (int level = *std::max_element(levels.begin(), levels.end()); level >= 0; --level)
        for (std::size_t i = parents.size(); i-- > 0;)
            if (levels[i] == level) index[i] = --next;

    NaiveSkeleton result;
    for (int k = 0; k < count; ++k) {
        const auto at =
            static_cast<std::size_t>(std::find(index.begin(), index.end(), k) - index.begin());
        result.names.push_back("j" + std::to_string(at));
        result.parents.push_back(parents[at] < 0 ? -1
                                                 : index[static_cast<std::size_t>(parents[at])]);
    }
    for (int k = 0; k < count; ++k) {
        int sibling = -1;
        int child = -1;
        for (int other = count - 1; other >= 0; --other) {
            const int parent = result.parents[static_cast<std::size_t>(other)];
            if (parent == k) child = other;
            if (parent >= 0 && parent == result.parents[static_cast<std::size_t>(k)] && other > k)
                sibling = other;
        }
        result.nextSiblings.push_back(sibling);
        result.firstChildren.push_back(child);
    }
    std::map<int, std::uint32_t> counts;
    for (const int level : levels)
        if (level > 0) ++counts[level];
    for (const auto& [level, members] : counts) result.lodCounts.push_back(members);
    return result;
}

NaiveTree MakeRandomTree(std::mt19937& random, int jointCount, int levelCount) {
    NaiveTree tree;
    std::vector<int> open;  // from the root down to the joint made last
    for (int i = 0; i < jointCount; ++i) {
        const auto keep = i == 0 ? 0 : 1 + random() % open.size();
        open.resize(keep);
        const int parent = open.empty() ? -1 : open.back();
        const int floor = parent < 0 ? 0 : tree.levels[static_cast<std::size_t>(parent)];
        const bool rises = i > 0 && random() % 3 == 0;
        tree.parents.push_back(parent);
        tree.levels.push_back(
            rises ? floor + static_cast<int>(random() % static_cast<unsigned>(levelCount - floor))
                  : floor);
        open.push_back(i);
    }
    return tree;
}

std::vector<std::pair<std::uint32_t, std::int32_t>> NaiveHashTable(
    const std::vector<std::uint32_t>& hashes) {
    std::vector<std::pair<std::uint32_t, std::int32_t>> table;
    std::uint32_t previous = 0;
    for (std::size_t record = 0; record < hashes.size(); ++record) {
        std::uint32_t best = 0xFFFFFFFFu;
        std::int32_t index = -1;
        for (std::size_t joint = 0; joint < hashes.size(); ++joint)
            if (hashes[joint] > previous && hashes[joint] < best) {
                best = hashes[joint];
                index = static_cast<std::int32_t>(joint);
            }
        table.emplace_back(best, index);
        previous = best;
    }
    return table;
}

std::vector<int> NaiveRemap(const std::vector<int>& parents, long long limit) {
    std::vector<int> remap;
    for (std::size_t joint = 0; joint < parents.size(); ++joint) {
        auto at = static_cast<int>(joint);
        while (at >= 0 && at >= limit) at = parents[static_cast<std::size_t>(at)];
        remap.push_back(at);
    }
    return remap;
}
