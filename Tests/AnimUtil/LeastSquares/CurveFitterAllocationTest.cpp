#include <AnimUtil/LeastSquares/CurveFitter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <new>
#include <vector>

namespace {

long long allocations = 0;

}  // namespace

// Counts what the whole test program asks the general heap for. Not inlined: GCC takes the halves
// of an inlined pair for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace Qel::LeastSquares {
namespace {

/// How often a fit of `count` samples, `gap` apart, asks the heap.
long long CountAllocations(int count, double gap, int maxSolverComplexity = 0) {
    CurveFitter fitter;
    fitter.SetComponentCount(2);
    fitter.SetMaxSolverComplexity(maxSolverComplexity);
    for (int i = 0; i < count; ++i) {
        const auto value = static_cast<float>(std::sin(i * 0.05));
        const auto time = static_cast<float>(i * gap);
        if (i % 100 == 50)
            fitter.AddStep(time, {value, 1}, {value, 2});
        else
            fitter.AddSample(time, {value, 0.5f * value});
    }
    std::vector<CurveSegment> segments;
    const long long before = allocations;
    fitter.Solve(segments);
    const long long after = allocations;
    EXPECT_GT(segments.size(), 5u);
    return after - before;
}

TEST(AllocationCount, AFitAsksTheHeapAtSetUpAlone) {
    const long long few = CountAllocations(300, 0.02);
    EXPECT_LT(few, 40);
    // Ten times the removals, not one request more but for the levels of the queue.
    EXPECT_LE(CountAllocations(3000, 0.02), few + 1);
    EXPECT_LE(CountAllocations(3000, 0.02, 2), few + 1);
}

TEST(AllocationCount, SoDoesTheThinningOfCloseSamples) {
    const long long few = CountAllocations(3000, 0.0003);
    EXPECT_LE(CountAllocations(30000, 0.0003), few + 1);
}

}  // namespace
}  // namespace Qel::LeastSquares
