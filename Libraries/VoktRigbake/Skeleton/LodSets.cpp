#include "Skeleton/LodSets.h"

#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Objects/Sets/VokObjSet.h>
#include <VokLib/Text/VokNumberText.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kSetType = "set";
constexpr std::string_view kNamePrefix = "skelLodSet";

bool IsLodSet(const VokObjSet& set) {
    return set.type == kSetType && set.GetName().starts_with(kNamePrefix);
}

std::int32_t ReadLevel(const VokObjSet& set) {
    int level = 0;
    const std::string_view text = std::string_view(set.GetName()).substr(kNamePrefix.size());
    if (!VokNumberText::TryScanInt(text, level))
        ThrowVokException("Malformed skelLodSet name", &set);
    return level;
}

}  // namespace

LodSets::LodSets(const VokWorld& world, const std::vector<VokJoint*>& roots)
    : rootCount(roots.size()) {
    for (std::size_t i = 0; i < world.GetChildCount(); ++i) {
        const auto* set = ExactCast<VokObjSet>(world.GetChild(i));
        if (set != nullptr && IsLodSet(*set)) Read(*set, roots);
    }
}

void LodSets::Read(const VokObjSet& set, const std::vector<VokJoint*>& roots) {
    Entry entry;
    entry.level = ReadLevel(set);
    for (std::size_t i = 0; i < set.GetMemberCount(); ++i) {
        const VokObj* member = set.GetMember(i).object.FindTarget();
        if (member == nullptr) ThrowVokException("Can't get object from path in set", &set);
        if (!member->IsExactly(VokJoint::TypeId()))
            ThrowVokException("skelLod set contains non-joint object", &set);
        if (!IsUnderRoots(member, roots)) continue;
        ++entry.memberCount;
        levels.try_emplace(member, entry.level);
    }
    entries.push_back(entry);
}

bool LodSets::IsUnderRoots(const VokObj* joint, const std::vector<VokJoint*>& roots) {
    // Walking up from each member would cost the depth of the tree every time.
    if (jointsUnderRoots.empty())
        for (VokJoint* root : roots)
            ForEach<VokJoint>(root,
                              [this](const VokJoint& found) { jointsUnderRoots.insert(&found); });
    return jointsUnderRoots.contains(joint);
}

std::int32_t LodSets::FindLevel(const VokJoint* joint) const {
    const auto found = levels.find(joint);
    return found == levels.end() ? 0 : found->second;
}

std::vector<std::uint32_t> LodSets::CountMembers() const {
    const std::size_t rowCount = entries.size() * rootCount;
    if (rowCount > kMaxLodRows)
        ThrowVokException("Can only handle " + std::to_string(kMaxLodRows) +
                          " level of detail sets in a skeleton, each counted once for each root. "
                          "This skeleton has " +
                          std::to_string(rowCount) + ".");
    std::map<std::int32_t, std::uint32_t> countOfLevel;
    std::vector<std::int32_t> sortedLevels;
    for (const Entry& entry : entries) {
        countOfLevel[entry.level] = entry.memberCount;
        sortedLevels.push_back(entry.level);
    }
    std::sort(sortedLevels.begin(), sortedLevels.end());

    std::vector<std::uint32_t> counts;
    counts.reserve(rowCount);
    for (const std::int32_t level : sortedLevels)
        counts.insert(counts.end(), rootCount, countOfLevel[level]);
    return counts;
}
