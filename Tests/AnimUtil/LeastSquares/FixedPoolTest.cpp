#include "LeastSquares/FixedPool.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace Qel::LeastSquares {
namespace {

TEST(FixedPool, HandsOutItsBlocksInOrderAndThenThoseThatWereFreed) {
    FixedPool pool(16, 3);
    auto* a = static_cast<std::byte*>(pool.Allocate());
    auto* b = static_cast<std::byte*>(pool.Allocate());
    EXPECT_EQ(b, a + 16);
    pool.Free(a);
    EXPECT_EQ(pool.Allocate(), a + 32);  // the array first
    EXPECT_EQ(pool.Allocate(), a);
    EXPECT_EQ(pool.GetOverflowCount(), 0u);
}

TEST(FixedPool, FallsBackOnTheHeapAndCountsIt) {
    FixedPool pool(16, 1);
    pool.Allocate();
    void* extra = pool.Allocate();
    EXPECT_EQ(pool.GetOverflowCount(), 1u);
    try {
        pool.Wipe();
        ADD_FAILURE() << "wiped with a block out";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "attempt to wipe a pool with outstanding overflow allocations");
    }
    pool.Free(extra);
    EXPECT_EQ(pool.GetOverflowCount(), 0u);
    pool.Wipe();
    pool.Allocate();
    EXPECT_EQ(pool.GetOverflowCount(), 0u);
}

}  // namespace
}  // namespace Qel::LeastSquares
