#include <Platform/BlockSize.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace {

TEST(BlockSize, ABlockHoldsWhatWasAskedForAndAllOfItMayBeUsed) {
    for (const std::size_t size : {1u, 24u, 1000u, 1u << 20}) {
        void* const block = std::malloc(size);
        ASSERT_NE(block, nullptr);
        EXPECT_GE(Platform::BlockSize(block), size);
        std::memset(block, 1, size);
        std::free(block);
    }
}

}  // namespace
