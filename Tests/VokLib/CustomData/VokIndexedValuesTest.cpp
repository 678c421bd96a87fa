#include <gtest/gtest.h>

#include <VokLib/CustomData/VokIndexedValues.h>

#include <cstddef>
#include <functional>
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

TEST(VokIndexedValues, ASingleValueStandsInPlace) {
    const auto standsInPlace = [](const VokIndexedValues<int>& values, int index) {
        const auto* const begin = reinterpret_cast<const std::byte*>(&values);
        const auto* const at = reinterpret_cast<const std::byte*>(values.Find(index));
        return at != nullptr && std::greater_equal<>()(at, begin) &&
               std::less<>()(at, begin + sizeof values);
    };
    VokIndexedValues<int> values;
    EXPECT_EQ(values.Find(0), nullptr);
    EXPECT_TRUE(values.InOrder().empty());
    values.Set(3, 1);
    values.Set(3, 2);
    EXPECT_TRUE(standsInPlace(values, 3));
    EXPECT_EQ(*values.Find(3), 2);
    EXPECT_EQ(values.Find(0), nullptr);
    EXPECT_EQ(values.InOrder().size(), 1u);
    values.Set(1, 5);
    EXPECT_FALSE(standsInPlace(values, 3));
    EXPECT_EQ(*values.Find(3), 2);
    EXPECT_EQ(values.InOrder().front().value, 5);
}

}  // namespace
