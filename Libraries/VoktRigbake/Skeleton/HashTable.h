#pragma once

#include <cstdint>
#include <vector>

struct SkeletonData;

/// One record of the table that finds a joint by the hash of its name.
struct HashRecord {
    std::uint32_t nameHash = 0xFFFFFFFF;
    std::int32_t index = -1;
};

/// As many records as joints, by ascending hash. The hashes 0 and 0xFFFFFFFF have none, of equal
/// hashes the joint with the lowest index has the one; records with both fields all ones fill the
/// table up.
std::vector<HashRecord> MakeHashTable(const SkeletonData& skeleton);
