#include "LeastSquares/MinQueue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace Qel::LeastSquares {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Empties the queue from the front.
std::vector<int> TakeAll(MinQueue& queue) {
    std::vector<int> order;
    for (int front = queue.GetFront(); front != -1; front = queue.GetFront()) {
        order.push_back(front);
        queue.Remove(front);
    }
    return order;
}

TEST(MinQueue, AnEmptyQueueHasNoFront) {
    for (const std::size_t count : {0u, 1u, 8u, 100u}) EXPECT_EQ(MinQueue(count).GetFront(), -1);
}

TEST(MinQueue, TheLeastCostComesFirstAndOfEqualOnesTheLowerNumber) {
    MinQueue queue(20);
    queue.Set(7, 2);
    queue.Set(12, 0.5f);
    queue.Set(19, 0);
    queue.Set(3, 0.5f);
    queue.Set(0, kInfinity);
    EXPECT_EQ(TakeAll(queue), (std::vector<int>{19, 3, 12, 7, 0}));
}

TEST(MinQueue, WhatIsNoNumberComesLast) {
    MinQueue queue(9);
    queue.Set(2, kNan);
    queue.Set(1, -kNan);
    queue.Set(8, kInfinity);
    queue.Set(5, std::numeric_limits<float>::max());
    EXPECT_EQ(TakeAll(queue), (std::vector<int>{5, 8, 1, 2}));
}

TEST(MinQueue, ACostCanChangeEitherWay) {
    MinQueue queue(3);
    queue.Set(0, 1);
    queue.Set(1, 2);
    queue.Set(2, 3);
    queue.Set(0, 2.5f);
    EXPECT_EQ(queue.GetFront(), 1);
    queue.Set(2, 0.25f);
    EXPECT_EQ(queue.GetFront(), 2);
    EXPECT_EQ(TakeAll(queue), (std::vector<int>{2, 1, 0}));
}

TEST(MinQueue, HoldsWhatWasPutInAndNotTakenOut) {
    MinQueue queue(10);
    EXPECT_FALSE(queue.Holds(9));
    queue.Set(9, kNan);
    EXPECT_TRUE(queue.Holds(9));
    EXPECT_FALSE(queue.Holds(8));
    queue.Remove(9);
    EXPECT_FALSE(queue.Holds(9));
    queue.Remove(9);
    EXPECT_EQ(queue.GetFront(), -1);
}

TEST(MinQueue, KeepsTheOrderOfASortedSetThroughRandomChanges) {
    std::mt19937 random(9);
    for (const int count : {1, 7, 8, 9, 64, 65, 513}) {
        MinQueue queue(static_cast<std::size_t>(count));
        std::vector<float> costs(static_cast<std::size_t>(count), -1);
        std::set<std::pair<float, int>> wanted;
        for (int turn = 0; turn < 4000; ++turn) {
            const int entry = static_cast<int>(random() % static_cast<unsigned>(count));
            float& cost = costs[static_cast<std::size_t>(entry)];
            if (cost >= 0) wanted.erase({cost, entry});
            if (random() % 3 == 0) {
                cost = -1;
                queue.Remove(entry);
            } else {
                cost = static_cast<float>(random() % 50) / 7;
                queue.Set(entry, cost);
                wanted.insert({cost, entry});
            }
            ASSERT_EQ(queue.GetFront(), wanted.empty() ? -1 : wanted.begin()->second);
        }
    }
}

}  // namespace
}  // namespace Qel::LeastSquares
