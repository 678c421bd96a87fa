#include "Skeleton/HashTable.h"

#include <VoktRigbake/Skeleton/SkeletonData.h>

#include <algorithm>

std::vector<HashRecord> MakeHashTable(const SkeletonData& skeleton) {
    constexpr std::uint32_t kFillerHash = HashRecord{}.nameHash;
    std::vector<HashRecord> table;
    table.reserve(skeleton.joints.size());
    for (const auto& joint : skeleton.joints)
        if (joint->nameHash != 0 && joint->nameHash != kFillerHash)
            table.push_back({joint->nameHash, joint->index});
    std::stable_sort(table.begin(), table.end(), [](const HashRecord& a, const HashRecord& b) {
        return a.nameHash < b.nameHash;
    });
    const auto sameHash = [](const HashRecord& a, const HashRecord& b) {
        return a.nameHash == b.nameHash;
    };
    table.erase(std::unique(table.begin(), table.end(), sameHash), table.end());
    table.resize(skeleton.joints.size());
    return table;
}
