#include "Support/NumberMutations.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(NumberMutations, KnowsListsOfNumbers) {
    EXPECT_TRUE(IsNumbers("1 2.5 -3e4"));
    EXPECT_FALSE(IsNumbers(""));
    EXPECT_FALSE(IsNumbers("||hips"));
}

TEST(NumberMutations, ReachesNeighboursAndEdges) {
    std::set<std::string> changed;
    for (std::uint64_t seed = 0; seed < 2000; ++seed) {
        Random random(seed);
        changed.insert(ChangeNumbers("7", random));
    }
    for (const char* wanted : {"6", "8", "", "nan", "2147483648", "1e999", "-1", "0"})
        EXPECT_EQ(changed.count(wanted), 1u) << wanted;
}

TEST(NumberMutations, ChangesOneNumberOfAList) {
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        Random random(seed);
        const std::string text = ChangeNumbers("11 12 13", random);
        const bool keepsFirst = text.starts_with("11");
        const bool keepsLast = text.ends_with("13");
        EXPECT_TRUE(keepsFirst || keepsLast) << text;
    }
}

}  // namespace
