#include <AnimUtil/LeastSquares/CurveFitter.h>

#include <AnimUtil/LeastSquares/LeastSquaresError.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Support/ThrownText.h"

namespace Qel::LeastSquares {
namespace {

std::vector<CurveSegment> Fit(CurveFitter& fitter) {
    std::vector<CurveSegment> segments;
    fitter.Solve(segments);
    return segments;
}

Components At(const std::vector<CurveSegment>& segments, float time) {
    for (const CurveSegment& segment : segments)
        if (time >= segment.startTime && time <= segment.endTime) return segment.Evaluate(time);
    ADD_FAILURE() << "no segment at " << time;
    return {};
}

TEST(CurveFitter, TwoSamplesThatDifferAreOneSegment) {
    CurveFitter fitter;
    fitter.AddSample(0, {1, 2, 3, 4});
    fitter.AddSample(2, {5, 2, 3, 4});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 1u);
    EXPECT_EQ(segments[0].startPosition, (Components{1, 2, 3, 4}));
    EXPECT_EQ(segments[0].endPosition, (Components{5, 2, 3, 4}));
    EXPECT_EQ(segments[0].startTangent, (Components{2, 0, 0, 0}));
    EXPECT_EQ(segments[0].endTangent, (Components{2, 0, 0, 0}));
}

TEST(CurveFitter, AConstantSeriesIsOneFlatSegment) {
    CurveFitter fitter;
    for (int i = 0; i < 100; ++i) fitter.AddSample(static_cast<float>(i), {7, -1, 0, 2});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 1u);
    EXPECT_EQ(segments[0].startTime, 0);
    EXPECT_EQ(segments[0].endTime, 99);
    EXPECT_EQ(segments[0].startPosition, (Components{7, -1, 0, 2}));
    EXPECT_EQ(segments[0].endPosition, (Components{7, -1, 0, 2}));
    EXPECT_EQ(segments[0].startTangent, Components{});
    EXPECT_EQ(segments[0].endTangent, Components{});
}

TEST(CurveFitter, ASmoothSeriesLosesMostOfItsKeysAndStaysWithinTolerance) {
    CurveFitter fitter;
    fitter.SetTolerance(0.001f);
    fitter.SetComponentCount(1);
    std::vector<float> times;
    for (int i = 0; i <= 240; ++i) {
        const float t = static_cast<float>(i) / 60.0f;
        times.push_back(t);
        fitter.AddSample(t, {static_cast<float>(std::sin(double{t} * 2)), 0, 0, 0});
    }
    const auto segments = Fit(fitter);
    EXPECT_LT(segments.size(), 24u);
    EXPECT_GE(segments.size(), 3u);
    for (const float t : times)
        EXPECT_NEAR(At(segments, t)[0], std::sin(double{t} * 2), 0.001001) << t;
    for (std::size_t i = 1; i < segments.size(); ++i) {
        EXPECT_EQ(segments[i - 1].endTime, segments[i].startTime);
        EXPECT_EQ(segments[i - 1].endPosition, segments[i].startPosition);
        EXPECT_EQ(segments[i - 1].endTangent, segments[i].startTangent);
    }
}

TEST(CurveFitter, AStepStaysWithTwoSides) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    for (int i = 0; i < 10; ++i)
        fitter.AddSample(static_cast<float>(i), {static_cast<float>(i), 0, 0, 0});
    fitter.AddStep(9.5f, {9.5f, 0, 0, 0}, {-3, 0, 0, 0});
    for (int i = 10; i < 20; ++i) fitter.AddSample(static_cast<float>(i), {-3, 0, 0, 0});
    const auto segments = Fit(fitter);
    bool found = false;
    for (std::size_t i = 1; i < segments.size(); ++i) {
        if (segments[i].startTime != 9.5f) continue;
        found = true;
        EXPECT_NEAR(segments[i - 1].endPosition[0], 9.5f, 0.001f);
        EXPECT_NEAR(segments[i].startPosition[0], -3, 0.001f);
    }
    EXPECT_TRUE(found);
    EXPECT_NEAR(At(segments, 4)[0], 4, 0.001f);
    EXPECT_NEAR(At(segments, 15)[0], -3, 0.001f);
}

TEST(CurveFitter, ACornerKeepsTheValueAndBreaksTheTangent) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    for (int i = 0; i < 10; ++i)
        fitter.AddSample(static_cast<float>(i), {static_cast<float>(i), 0, 0, 0});
    fitter.AddCorner(10, {10, 0, 0, 0});
    for (int i = 11; i <= 20; ++i)
        fitter.AddSample(static_cast<float>(i), {static_cast<float>(20 - i), 0, 0, 0});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 2u);
    EXPECT_EQ(segments[0].endTime, 10);
    EXPECT_NEAR(segments[0].endTangent[0], 1, 0.001f);
    EXPECT_NEAR(segments[1].startTangent[0], -1, 0.001f);
}

TEST(CurveFitter, OfTwoSamplesTooCloseOneGoes) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.AddSample(0, {0, 0, 0, 0});
    fitter.AddSample(1, {1, 0, 0, 0});
    fitter.AddStep(1.0005f, {5, 0, 0, 0}, {9, 0, 0, 0});
    fitter.AddSample(2, {9, 0, 0, 0});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 2u);
    EXPECT_EQ(segments[0].endTime,
              1.0005f);  // the step carries more than the plain sample beside it
    EXPECT_EQ(segments[0].endPosition[0], 5);
    EXPECT_EQ(segments[1].startPosition[0], 9);
}

TEST(CurveFitter, SamplesCloseToAnEndGoAndTheEndStays) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.AddSample(0, {0, 0, 0, 0});
    fitter.AddStep(0.0005f, {5, 0, 0, 0}, {9, 0, 0, 0});
    fitter.AddStep(0.9995f, {5, 0, 0, 0}, {9, 0, 0, 0});
    fitter.AddSample(1, {1, 0, 0, 0});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 1u);
    EXPECT_EQ(segments[0].startPosition[0], 0);
    EXPECT_EQ(segments[0].endPosition[0], 1);
}

TEST(CurveFitter, ComponentsBeyondTheCountAreNotHeldToTheTolerance) {
    const auto fit = [](int components) {
        CurveFitter fitter;
        fitter.SetComponentCount(components);
        for (int i = 0; i <= 20; ++i)
            fitter.AddSample(static_cast<float>(i), {1, 1, i % 2 == 0 ? 1.0f : -1.0f, 0});
        return Fit(fitter).size();
    };
    EXPECT_EQ(fit(2), 1u);
    EXPECT_GT(fit(3), 5u);
}

TEST(CurveFitter, ALimitOnComplexityStillFits) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.SetTolerance(0.01f);
    fitter.SetMaxSolverComplexity(4);
    for (int i = 0; i <= 100; ++i) {
        const double t = i / 50.0;
        fitter.AddSample(static_cast<float>(t), {static_cast<float>(t * t * t), 0, 0, 0});
    }
    const auto segments = Fit(fitter);
    EXPECT_LT(segments.size(), 10u);
    EXPECT_NEAR(At(segments, 1)[0], 1, 0.0101);
}

TEST(CurveFitter, ASoftSampleGuidesAndIsNotAKey) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.AddSample(0, {0, 0, 0, 0});
    CurveSample soft;
    soft.time = 1;
    soft.soft = true;
    soft.SetPosition({100, 0, 0, 0}, {100, 0, 0, 0});
    fitter.AddSample(soft);
    fitter.AddSample(2, {0, 0, 0, 0});
    EXPECT_EQ(Fit(fitter).size(), 1u);
}

TEST(CurveFitter, RefusesWhatItCannotFit) {
    EXPECT_EQ(ThrownText<Error>([] {
                  CurveFitter fitter;
                  fitter.AddSample(0, {});
                  Fit(fitter);
              }),
              "at least two samples need to be added to the curve fitter before solving");
    EXPECT_EQ(ThrownText<Error>([] {
                  CurveFitter fitter;
                  fitter.AddSample(0, {});
                  fitter.AddSample(0.0009f, {1, 0, 0, 0});
                  Fit(fitter);
              }),
              "animation time is too short");
    EXPECT_EQ(ThrownText<Error>([] { CurveFitter().SetTolerance(1.0e-7f); }),
              "tolerance must be positive and non-zero");
    EXPECT_EQ(ThrownText<Error>([] { CurveFitter().SetTolerance(std::nanf("")); }),
              "tolerance must be positive and non-zero");
    EXPECT_EQ(ThrownText<Error>([] { CurveFitter().SetComponentCount(0); }),
              "component count must be between 1 and 4");
    EXPECT_EQ(ThrownText<Error>([] { CurveFitter().SetComponentCount(5); }),
              "component count must be between 1 and 4");
    EXPECT_EQ(ThrownText<Error>([] { CurveFitter().SetMaxSolverComplexity(-1); }),
              "maximum solver complexity must be non-negative");
}

TEST(CurveFitter, TheShortestGapIsAThousandthToTheBit) {
    const float gap = 0.001f;
    for (const bool shorter : {false, true}) {
        CurveFitter fitter;
        fitter.SetComponentCount(1);
        fitter.AddSample(-1, {0});
        fitter.AddSample(0, {1});
        fitter.AddSample(shorter ? std::nextafter(gap, 0.0f) : gap, {-1});
        fitter.AddSample(1, {0});
        EXPECT_EQ(Fit(fitter).size(), shorter ? 2u : 3u);
        CurveFitter alone;
        alone.AddSample(0, {1});
        alone.AddSample(shorter ? std::nextafter(gap, 0.0f) : gap, {-1});
        EXPECT_EQ(ThrownText<Error>([&] { Fit(alone); }),
                  shorter ? "animation time is too short" : "");
    }
}

TEST(CurveFitter, OfASoftAndAHardSampleThatAreTooCloseTheSoftOneGoes) {
    for (const bool softFirst : {false, true}) {
        CurveFitter fitter;
        fitter.SetComponentCount(1);
        CurveSample soft;
        soft.soft = true;
        soft.time = softFirst ? 1 : 1.0005f;
        fitter.AddSample(0, {0});
        fitter.AddSample(soft);
        // A plain sample would go before a step; here it stays.
        fitter.AddSample(softFirst ? 1.0005f : 1, {5});
        fitter.AddSample(2, {0});
        const auto segments = Fit(fitter);
        ASSERT_EQ(segments.size(), 2u);
        EXPECT_EQ(segments[0].endTime, softFirst ? 1.0005f : 1);
        EXPECT_EQ(segments[0].endPosition[0], 5);
    }
}

TEST(CurveFitter, ASoftSampleGoesEvenBeforeAStepAndKeepsItOutOfTheKeys) {
    for (const bool softFirst : {false, true}) {
        CurveFitter fitter;
        fitter.SetComponentCount(1);
        CurveSample soft;
        soft.soft = true;
        soft.positionContinuous = soft.tangentContinuous = false;
        soft.SetPosition({7}, {9});
        soft.time = softFirst ? 1 : 1.0005f;
        fitter.AddSample(0, {0});
        fitter.AddSample(soft);
        fitter.AddSample(softFirst ? 1.0005f : 1, {5});
        fitter.AddSample(2, {0});
        EXPECT_EQ(Fit(fitter)[0].endTime, softFirst ? 1.0005f : 1);
    }
}

TEST(CurveFitter, TheEndsOfACurveBecomePlain) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.AddStep(0, {5}, {1});
    fitter.AddStep(2, {3}, {9});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 1u);
    EXPECT_EQ(segments[0].startPosition[0], 1);
    EXPECT_EQ(segments[0].endPosition[0], 3);
    EXPECT_EQ(segments[0].startTangent[0], 1);
}

TEST(CurveFitter, ALoopTakesTheSlopeAcrossItsEnds) {
    CurveFitter fitter;
    fitter.SetComponentCount(1);
    fitter.SetLooping(true);
    fitter.AddSample(0, {0});
    fitter.AddSample(1, {4});
    fitter.AddSample(2, {0});
    const auto segments = Fit(fitter);
    // From the last sample, two units of time behind, to the first there is no rise.
    EXPECT_EQ(segments.front().startTangent[0], 2);
    EXPECT_EQ(segments.back().endTangent[0], -2);
}

TEST(CurveFitter, TheResultIsReplaced) {
    CurveFitter fitter;
    fitter.AddSample(0, {1});
    fitter.AddSample(1, {2});
    std::vector<CurveSegment> segments(7);
    fitter.Solve(segments);
    EXPECT_EQ(segments.size(), 1u);
}

TEST(CurveFitter, SamplesThatAreNoNumbersAreRefused) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(ThrownText<Error>([&] { CurveFitter().AddSample(0, {nan}); }),
              "cannot set discontinuous position on continuous sample");
    EXPECT_EQ(ThrownText<Error>([&] { CurveFitter().AddCorner(0, {nan}); }),
              "cannot set discontinuous position on continuous sample");
    for (const float value : {nan, infinity, -infinity}) {
        CurveFitter fitter;
        for (int i = 0; i < 8; ++i) fitter.AddSample(static_cast<float>(i), {1});
        fitter.AddStep(3.5f, {2}, {value});
        EXPECT_NE(ThrownText<Error>([&] { Fit(fitter); }), "") << value;
    }
}

TEST(CurveFitter, SamplesThatAreInfiniteAllAlongAreFlat) {
    // No distance among them is a number, and so none exceeds the tolerance.
    const float infinity = std::numeric_limits<float>::infinity();
    CurveFitter fitter;
    for (int i = 0; i < 4; ++i) fitter.AddSample(static_cast<float>(i), {infinity});
    const auto segments = Fit(fitter);
    ASSERT_EQ(segments.size(), 1u);
    EXPECT_EQ(segments[0].startPosition[0], infinity);
}

TEST(CurveFitter, StepsAloneKeepEvenWhatIsNoNumber) {
    // Nothing is solved where every key is a step.
    CurveFitter fitter;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int i = 0; i < 6; ++i) fitter.AddStep(static_cast<float>(i), {1}, {i == 3 ? nan : 2});
    const auto segments = Fit(fitter);
    EXPECT_EQ(segments.size(), 5u);
    EXPECT_TRUE(std::isnan(segments[3].startPosition[0]));
}

TEST(CurveFitter, TimesThatAreNoNumbersAreTooShort) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float time : {nan, -nan}) {
        CurveFitter fitter;
        for (const float t : {0.0f, 1.0f, time, 2.0f, time, 0.5f}) fitter.AddSample(t, {1});
        EXPECT_EQ(ThrownText<Error>([&] { Fit(fitter); }), "animation time is too short");
    }
    CurveFitter endless;
    for (const float t : {infinity, 0.0f, infinity}) endless.AddSample(t, {t > 0 ? 1.0f : 0.0f});
    EXPECT_NE(ThrownText<Error>([&] { Fit(endless); }), "animation time is too short");
}

TEST(CurveFitter, ValuesAtTheEdgeOfFloatsEndInAFitOrAnError) {
    const float huge = std::numeric_limits<float>::max();
    CurveFitter fitter;
    for (int i = 0; i < 20; ++i)
        fitter.AddSample(static_cast<float>(i) / 8, {i % 2 == 0 ? huge : -huge});
    EXPECT_NE(ThrownText<Error>([&] { Fit(fitter); }), "");
    CurveFitter tiny;
    const float least = std::numeric_limits<float>::denorm_min();
    for (int i = 0; i < 20; ++i) tiny.AddSample(static_cast<float>(i), {i % 2 == 0 ? least : 0});
    EXPECT_EQ(Fit(tiny).size(), 1u);
}

}  // namespace
}  // namespace Qel::LeastSquares
