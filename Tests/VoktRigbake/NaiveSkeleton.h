#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The rules of the skeleton file in their plainest form, quadratic and bit by bit, to hold the
/// real ones against.

/// The local hash of a string: CRC-32 of IEEE 802.3 without the final complement.
std::uint32_t NaiveHash(std::string_view text);

/// What a skeleton's lists come to, in index order.
struct NaiveSkeleton {
    std::vector<std::string> names;
    std::vector<int> parents, nextSiblings, firstChildren;
    std::vector<std::uint32_t> lodCounts;
};

/// A tree of joints "j0", "j1", ... in pre-order; joint i stands under parents[i], on levels[i].
struct NaiveTree {
    std::vector<int> parents;
    std::vector<int> levels;

    /// The body of a document with this tree and one set for each level above 0 that occurs.
    std::string Document() const;
    /// Counts down from the number of joints, level by level from the largest.
    NaiveSkeleton Number() const;

  private:
    std::string PathOf(int joint) const;
};

/// A random tree whose levels never fall on the way down.
NaiveTree MakeRandomTree(std::mt19937& random, int jointCount, int levelCount);

/// The table of (hash, index) by selection: always the smallest hash above the one before.
std::vector<std::pair<std::uint32_t, std::int32_t>> NaiveHashTable(
    const std::vector<std::uint32_t>& hashes);

/// The remap table of one limit by walking up from each joint; -1 for none.
std::vector<int> NaiveRemap(const std::vector<int>& parents, long long limit);
