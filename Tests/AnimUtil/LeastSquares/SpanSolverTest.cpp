#include "LeastSquares/SpanSolver.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Support/ThrownText.h"

namespace Qel::LeastSquares {
namespace {

/// `count` samples of `value`, 0.5 apart, with tangents of `slope`, and keys on some of them.
struct Series {
    template <class Value, class Slope>
    Series(int count, Value value, Slope slope, const std::vector<int>& keyed) {
        for (int i = 0; i < count; ++i) {
            const auto time = static_cast<float>(i) / 2;
            CurveSample sample;
            sample.time = time;
            sample.SetPosition({value(time)}, {value(time)});
            sample.SetTangent({slope(time)}, {slope(time)});
            samples.push_back(sample);
        }
        keys.samples = &samples;
        for (const int sample : keyed) keys.Append(sample);
    }
    void Solve(const SolverSettings& settings = {.componentCount = 1}) {
        SpanSolver(keys, settings).Solve(keys.first, keys.last);
    }
    std::vector<CurveSample> samples;
    KeyList keys;
};

float Square(float t) {
    return t * t;
}
float TwiceIt(float t) {
    return 2 * t;
}

TEST(SpanSolver, FindsTheCubicThatTheSamplesComeFrom) {
    Series series(13, Square, TwiceIt, {0, 4, 8, 12});
    for (const int k : {1, 2}) {
        series.keys.At(k).positionBefore = series.keys.At(k).positionAfter = {99};
        series.keys.At(k).tangentBefore = series.keys.At(k).tangentAfter = {-7};
    }
    series.Solve();
    for (const int k : {1, 2}) {
        const float time = series.keys.SampleAt(k).time;
        EXPECT_NEAR(series.keys.At(k).positionBefore[0], time * time, 1e-4f);
        EXPECT_NEAR(series.keys.At(k).tangentBefore[0], 2 * time, 1e-4f);
        EXPECT_EQ(series.keys.At(k).positionBefore, series.keys.At(k).positionAfter);
        EXPECT_EQ(series.keys.At(k).tangentBefore, series.keys.At(k).tangentAfter);
    }
}

TEST(SpanSolver, TheFixedEndsAndTheOtherComponentsStayAsTheyAre) {
    Series series(9, Square, TwiceIt, {0, 4, 8});
    for (int k = 0; k < 3; ++k) series.keys.At(k).positionAfter[1] = 5;
    const CurveKey left = series.keys.At(0), right = series.keys.At(2);
    series.Solve();
    EXPECT_EQ(series.keys.At(0).positionAfter, left.positionAfter);
    EXPECT_EQ(series.keys.At(0).tangentAfter, left.tangentAfter);
    EXPECT_EQ(series.keys.At(2).positionBefore, right.positionBefore);
    EXPECT_EQ(series.keys.At(2).tangentBefore, right.tangentBefore);
    EXPECT_EQ(series.keys.At(1).positionAfter[1], 5);
}

TEST(SpanSolver, ASpanWithoutUnknownsIsLeftAlone) {
    Series series(5, Square, TwiceIt, {0, 4});
    series.Solve();
    EXPECT_EQ(series.keys.At(1).positionBefore[0], 4);
}

TEST(SpanSolver, AStepHasFourVariablesAndACornerThree) {
    // Eighteen plain keys are the most that fit; nine steps or twelve corners are as many.
    const auto solve = [](int count, bool positionContinuous, bool tangentContinuous) {
        std::vector<int> keyed;
        for (int i = 0; i < count + 2; ++i) keyed.push_back(2 * i);
        Series series(2 * count + 3, Square, TwiceIt, keyed);
        for (CurveSample& sample : series.samples) {
            sample.positionContinuous = positionContinuous;
            sample.tangentContinuous = tangentContinuous;
        }
        return ThrownText<Error>([&] { series.Solve(); });
    };
    const char* const kTooMany = "out of memory due to unexpected number of variables";
    EXPECT_EQ(solve(18, true, true), "");
    EXPECT_EQ(solve(19, true, true), kTooMany);
    EXPECT_EQ(solve(12, true, false), "");
    EXPECT_EQ(solve(13, true, false), kTooMany);
    EXPECT_EQ(solve(12, false, true), "");
    EXPECT_EQ(solve(9, false, false), "");
    EXPECT_EQ(solve(10, false, false), kTooMany);
}

TEST(SpanSolver, TheTwoSidesOfAStepAreSolvedApart) {
    Series series(9, Square, TwiceIt, {0, 4, 8});
    CurveSample& step = series.samples[4];
    step.positionContinuous = step.tangentContinuous = false;
    for (std::size_t i = 5; i < 9; ++i)
        series.samples[i].SetPosition({10 + series.samples[i].time}, {10 + series.samples[i].time});
    for (std::size_t i = 5; i < 9; ++i) series.samples[i].SetTangent({1}, {1});
    step.SetPosition({4}, {12});
    step.SetTangent({4}, {1});
    series.keys.At(2).positionBefore = {14};
    series.keys.At(2).tangentBefore = {1};
    series.Solve();
    EXPECT_NEAR(series.keys.At(1).positionBefore[0], 4, 1e-4f);
    EXPECT_NEAR(series.keys.At(1).tangentBefore[0], 4, 1e-3f);
    EXPECT_NEAR(series.keys.At(1).positionAfter[0], 12, 1e-4f);
    EXPECT_NEAR(series.keys.At(1).tangentAfter[0], 1, 1e-3f);
}

TEST(SpanSolver, TwoKeysOnOneSampleLeaveAVariableWithoutARow) {
    Series series(3, Square, TwiceIt, {0, 1, 1, 1});
    EXPECT_EQ(ThrownText<Error>([&] { series.Solve(); }),
              "there are not enough samples to solve for this keyframe layout");
}

TEST(SpanSolver, ValuesThatAreNoNumbersHaveNoSolution) {
    for (const float value :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        Series series(9, Square, TwiceIt, {0, 4, 8});
        series.samples[3].positionAfter = {value};
        EXPECT_EQ(ThrownText<Error>([&] { series.Solve(); }),
                  "cannot solve upper-triangular matrix");
    }
}

/// The value that one key takes between two fixed ones at 0, where all samples but one are 0 too.
float PulledBy(bool soft, bool byTangent, const SolverSettings& settings) {
    const auto zero = [](float) { return 0.0f; };
    Series series(9, zero, zero, {0, 4, 8});
    CurveSample& one = series.samples[3];
    one.soft = soft;
    if (byTangent)
        one.SetTangent({1}, {1});
    else
        one.SetPosition({1}, {1});
    series.Solve(settings);
    return std::fabs(series.keys.At(1).positionAfter[0]);
}

TEST(SpanSolver, ASoftSamplePullsLessByTheSquareOfItsWeight) {
    for (const bool byTangent : {false, true}) {
        SolverSettings settings{.componentCount = 1, .tangentWeight = 1, .softSampleWeight = 1};
        const float full = PulledBy(false, byTangent, settings);
        EXPECT_EQ(PulledBy(true, byTangent, settings), full);
        settings.softSampleWeight = 0.01f;
        const float less = PulledBy(true, byTangent, settings);
        // The rows of the soft sample are nearly gone from the left-hand side as well.
        EXPECT_GT(less, 0.5e-4f * full);
        EXPECT_LT(less, 2e-4f * full);
    }
}

TEST(SpanSolver, TangentsPullByTheirWeight) {
    SolverSettings settings{.componentCount = 1, .tangentWeight = 0.01f};
    const float weak = PulledBy(false, true, settings);
    settings.tangentWeight = 0.001f;
    const float weaker = PulledBy(false, true, settings);
    EXPECT_NEAR(weak / weaker, 100, 1);
}

TEST(SpanSolver, ALimitOnComplexitySpreadsTheSamplesThatCount) {
    // Of the nine samples of either segment only the first, the middle and the last are looked at.
    const auto zero = [](float) { return 0.0f; };
    for (int odd = 1; odd < 16; ++odd) {
        Series series(17, zero, zero, {0, 8, 16});
        series.samples[static_cast<std::size_t>(odd)].SetPosition({1}, {1});
        series.Solve({.componentCount = 1, .maxSolverComplexity = 2});
        const bool looked = series.keys.At(1).positionAfter[0] != 0;
        // From 1 to 7 and from 8 to 15: an end of the span is fixed, a shared sample counts once.
        const bool chosen = odd == 1 || odd == 4 || odd == 7 || odd == 8 || odd == 11 || odd == 15;
        EXPECT_EQ(looked, chosen) << odd;
    }
}

}  // namespace
}  // namespace Qel::LeastSquares
