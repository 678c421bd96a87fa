#include "Procedural/MoveAlong.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using Places = std::vector<std::size_t>;

/// Step by step, everybody in each.
std::vector<Move> MovePlainly(const Places& next, Places places, std::size_t stepCount) {
    std::vector<Move> moves(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) moves[i].movers.push_back(i);
    for (std::size_t step = 0; step < stepCount; ++step) {
        std::map<std::size_t, std::size_t> firsts;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (moves[i].movers.empty() || places[i] == kNone) continue;
            const auto [first, isNew] = firsts.try_emplace(places[i], i);
            if (isNew) {
                moves[i].lastNode = places[i];
                continue;
            }
            Places& movers = moves[first->second].movers;
            movers.insert(movers.end(), moves[i].movers.begin(), moves[i].movers.end());
            moves[i] = {};
        }
        for (std::size_t& place : places)
            if (place != kNone) place = next[place];
    }
    return moves;
}

/// A graph of trees, with circles where nodes may lead back.
Places RandomGraph(std::mt19937& random, std::size_t size, bool hasCircles) {
    Places next(size, kNone);
    const std::size_t span = 1 + random() % 4;
    for (std::size_t i = 0; i < size; ++i) {
        if (random() % 12 == 0) continue;
        const std::size_t further = i + 1 + random() % span;
        if (further < size)
            next[i] = further;
        else if (hasCircles)
            next[i] = random() % size;
    }
    return next;
}

}  // namespace

TEST(MoveAlong, WhoStandsOnOneNodeBecomesOneAndGoesOn) {
    const std::vector<Move> moves = MoveAlong({1, kNone}, {0, 1, 0}, 1);
    EXPECT_EQ(moves[0].lastNode, 0u);
    EXPECT_EQ(moves[0].movers, (Places{0, 2}));
    EXPECT_EQ(moves[1].lastNode, 1u);
    EXPECT_EQ(moves[2].lastNode, kNone);
    EXPECT_TRUE(moves[2].movers.empty());
}

TEST(MoveAlong, WhoMeetsEarlierIsTakenInEarlier) {
    // The first and the last meet on node 2, the one between joins them on node 3.
    const std::vector<Move> moves = MoveAlong({2, 2, 3, kNone, 5, 3}, {0, 4, 1}, 9);
    EXPECT_EQ(moves[0].movers, (Places{0, 2, 1}));
    EXPECT_EQ(moves[0].lastNode, 3u);
}

TEST(MoveAlong, OthersOnOneWayStayApart) {
    const std::vector<Move> moves = MoveAlong({1, 2, kNone}, {2, 1, 0}, 5);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(moves[i].lastNode, 2u);
        EXPECT_EQ(moves[i].movers, Places{i});
    }
}

TEST(MoveAlong, OnACircleTheWayHasNoEnd) {
    const std::vector<Move> moves = MoveAlong({1, 0, 0}, {0, 1, 2}, 1000000000000001);
    EXPECT_EQ(moves[0].lastNode, 0u);
    EXPECT_EQ(moves[1].lastNode, 1u);
    EXPECT_EQ(moves[1].movers, (Places{1, 2}));
}

TEST(MoveAlong, IsTheSameAsStepByStep) {
    std::mt19937 random(20);
    for (int round = 0; round < 20000; ++round) {
        const std::size_t size = 1 + random() % 20;
        const Places next = RandomGraph(random, size, round % 2 == 0);
        Places starts(random() % 15);
        for (std::size_t& start : starts) start = random() % size;
        const std::size_t stepCount = 1 + random() % 25;
        ASSERT_TRUE(MoveAlong(next, starts, stepCount) == MovePlainly(next, starts, stepCount))
            << "round " << round;
    }
}

TEST(MoveAlong, ALongChainTakesTimeInProportionToItsLength) {
    // Step by step these would be ten thousand million moves and more: many minutes, far past the
    // limit of a test.
    constexpr std::size_t kLength = 200000;
    Places chain, circle, everywhere;
    for (std::size_t i = 0; i < kLength; ++i) {
        chain.push_back(i + 1 == kLength ? kNone : i + 1);
        circle.push_back((i + 1) % kLength);
        everywhere.push_back(i);
    }
    for (const Move& move : MoveAlong(chain, everywhere, kLength))
        ASSERT_EQ(move.lastNode, kLength - 1);
    const std::vector<Move> moves = MoveAlong(circle, everywhere, kLength);
    for (std::size_t i = 0; i < kLength; ++i)
        ASSERT_EQ(moves[i].lastNode, (i + kLength - 1) % kLength);
}
