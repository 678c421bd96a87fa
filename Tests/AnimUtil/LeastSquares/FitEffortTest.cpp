#include <AnimUtil/LeastSquares/FitEffort.h>

#include <gtest/gtest.h>

#include <AnimUtil/LeastSquares/CurveFitter.h>

#include "Support/ThrownText.h"

#include <cstdint>
#include <vector>

namespace Qel::LeastSquares {
namespace {

constexpr int kCount = 1000;

/// A curve held at `level` with a peak in the middle.
void FitHeld(float level, FitEffort* effort) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.SetEffort(effort);
    for (int i = 0; i < kCount; ++i)
        fitter.AddSample(static_cast<float>(i), {i == kCount / 2 ? level + 1 : level});
    std::vector<CurveSegment> segments;
    fitter.Solve(segments);
}

TEST(FitEffort, IsBoundedToTheLook) {
    FitEffort effort(1000, 24);
    effort.AddCurve(2);
    effort.AddLooks(1000);
    effort.AddLooks(48);
    EXPECT_EQ(ThrownText([&] { effort.AddLooks(1); }),
              "the curve fitter looks at samples too often");
    effort.AddCurve(1);
    EXPECT_EQ(effort.GetMost(), 1072u);
}

TEST(FitEffort, AFitPassesWithWhatItTakesAndFailsWithOneLookLess) {
    FitEffort effort;
    FitHeld(5, &effort);
    EXPECT_EQ(effort.GetMost(), 2147483648u + 512 * kCount);
    FitEffort enough(effort.GetLooks(), 0);
    FitHeld(5, &enough);
    EXPECT_EQ(enough.GetLooks(), enough.GetMost());
    FitEffort tooLittle(effort.GetLooks() - 1, 0);
    EXPECT_EQ(ThrownText<TooMuchEffort>([&] { FitHeld(5, &tooLittle); }),
              "the curve fitter looks at samples too often");
}

TEST(FitEffort, CurvesAddUp) {
    FitEffort effort;
    FitHeld(5, &effort);
    const std::uint64_t looks = effort.GetLooks();
    FitHeld(5, &effort);
    EXPECT_EQ(effort.GetLooks(), 2 * looks);
}

TEST(FitEffort, WhatIsHeldAtZeroTakesFewLooks) {
    FitEffort effort;
    FitHeld(0, &effort);
    EXPECT_LT(effort.GetLooks(), 100u * kCount);
}

}  // namespace
}  // namespace Qel::LeastSquares
