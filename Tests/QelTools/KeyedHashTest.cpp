#include <QelTools/KeyedHash.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

using QelTools::Common::KeyedHash;

namespace {

constexpr std::size_t kSlots = 1 << 16;

/// How many of the hashes fall into one of the slots, at most.
int FullestSlot(const std::vector<std::size_t>& hashes, int shift) {
    std::vector<int> slots(kSlots);
    for (const std::size_t hash : hashes) ++slots[(hash >> shift) % kSlots];
    return *std::max_element(slots.begin(), slots.end());
}

/// A random function puts 12 of so many into one slot less than once in a million tries.
void ExpectSpread(const std::vector<std::size_t>& hashes) {
    ASSERT_EQ(hashes.size(), kSlots);
    EXPECT_LE(FullestSlot(hashes, 0), 12);
    EXPECT_LE(FullestSlot(hashes, 48), 12);
}

}  // namespace

TEST(KeyedHash, EqualTextsHaveOneHash) {
    for (const std::string text : {"", "a", "joint_00", "a name of more than two pieces"}) {
        const std::string copy = "x" + text;
        EXPECT_EQ(KeyedHash()(text), KeyedHash()(std::string_view(copy).substr(1)));
    }
}

TEST(KeyedHash, EveryByteAndTheLengthCount) {
    std::set<std::size_t> hashes;
    std::size_t texts = 0;
    for (std::size_t length = 0; length <= 23; ++length) {
        hashes.insert(KeyedHash()(std::string(length, '\0')));
        ++texts;
        for (std::size_t at = 0; at < length; ++at)
            for (const char other : {'\x01', '\x80', '\xff'}) {
                std::string text(length, '\0');
                text[at] = other;
                hashes.insert(KeyedHash()(text));
                ++texts;
            }
    }
    EXPECT_EQ(hashes.size(), texts);
}

TEST(KeyedHash, NamesThatAreCountedAreSpread) {
    std::vector<std::size_t> hashes;
    for (std::size_t i = 0; i < kSlots; ++i)
        hashes.push_back(KeyedHash()("joint_" + std::to_string(i)));
    ExpectSpread(hashes);
}

TEST(KeyedHash, NumbersInStepsAreSpread) {
    for (const std::uint64_t step :
         {std::uint64_t{1}, std::uint64_t{42043}, std::uint64_t{1} << 32}) {
        std::vector<std::size_t> hashes;
        for (std::uint64_t i = 0; i < kSlots; ++i) hashes.push_back(KeyedHash()(i * step));
        ExpectSpread(hashes);
    }
}
