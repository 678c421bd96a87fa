#include <gtest/gtest.h>

#include <VokLib/CustomData/VokIndexedValues.h>

#include <map>
#include <random>

namespace {

TEST(VokIndexedValues, BehavesAsAMap) {
    std::mt19937 random(6);
    for (int round = 0; round < 200; ++round) {
        VokIndexedValues<int> values;
        std::map<int, int> expected;
        for (auto n = random() % 60; n > 0; --n) {
            const int index = static_cast<int>(random() % 20) - 10;
            const int value = static_cast<int>(random() % 1000);
            values.Set(index, value);
            expected[index] = value;
            if (random() % 8 == 0) {
                ASSERT_NE(values.Find(index), nullptr);
            }
        }
        ASSERT_EQ(values.InOrder().size(), expected.size());
        auto entry = values.InOrder().begin();
        for (const auto& [index, value] : expected) {
            EXPECT_EQ(entry->index, index);
            EXPECT_EQ(entry->value, value);
            EXPECT_EQ(*values.Find(index), value);
            ++entry;
        }
        EXPECT_EQ(values.Find(99), nullptr);
    }
}

}  // namespace
