#include <Platform/LargeStack.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <stdexcept>
#include <thread>

namespace {

/// Uses a kilobyte of stack for each level.
int Descend(int levels) {
    volatile char room[1024] = {};
    room[0] = static_cast<char>(levels);
    return levels == 0 ? 0 : Descend(levels - 1) + (room[0] == static_cast<char>(levels) ? 1 : 0);
}

TEST(LargeStack, HoldsWhatAnOrdinaryStackDoesNot) {
    int reached = 0;
    Platform::RunOnLargeStack(256u << 20, [&reached] { reached = Descend(50000); });
    EXPECT_EQ(reached, 50000);
}

TEST(LargeStack, RunsOnAThreadOfItsOwnAndWaits) {
    std::thread::id id;
    Platform::RunOnLargeStack(1, [&id] { id = std::this_thread::get_id(); });
    EXPECT_NE(id, std::thread::id());
    EXPECT_NE(id, std::this_thread::get_id());
}

/// Whether the smallest step above 1 is more than 1.
bool CalculatesLongNumbersInFull() {
    volatile long double sum = 1;
    sum = sum + std::numeric_limits<long double>::epsilon();
    return sum > 1;
}

TEST(LargeStack, ItCalculatesAsTheFirstThreadDoes) {
    bool isFull = false;
    Platform::RunOnLargeStack(1, [&isFull] { isFull = CalculatesLongNumbersInFull(); });
    EXPECT_TRUE(isFull);
    EXPECT_TRUE(CalculatesLongNumbersInFull());
}

TEST(LargeStack, WhatTheActionThrowsIsThrownHere) {
    try {
        Platform::RunOnLargeStack(1u << 20, [] { throw std::runtime_error("words"); });
        FAIL();
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "words");
    }
}

TEST(LargeStack, WithoutMemoryForTheStackThatIsTheError) {
    EXPECT_THROW(Platform::RunOnLargeStack(std::numeric_limits<std::size_t>::max() / 4, [] {}),
                 std::bad_alloc);
}

}  // namespace
