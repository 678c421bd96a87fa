#include <AnimUtil/LeastSquares/CurveFitter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace Qel::LeastSquares {

namespace {

std::vector<CurveSegment> Fit(CurveFitter& fitter) {
    std::vector<CurveSegment> segments;
    fitter.Solve(segments);
    return segments;
}

template <class Act>
std::string TextOf(Act act) {
    try {
        act();
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing thrown";
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
    EXPECT_EQ(TextOf([] {
                  CurveFitter fitter;
                  fitter.AddSample(0, {});
                  Fit(fitter);
              }),
              "at least two samples need to be added to the curve fitter before solving");
    EXPECT_EQ(TextOf([] {
                  CurveFitter fitter;
                  fitter.AddSample(0, {});
                  fitter.AddSample(0.0009f, {1, 0, 0, 0});
                  Fit(fitter);
              }),
              "animation time is too short");
    EXPECT_EQ(TextOf([] { CurveFitter().SetTolerance(1.0e-7f); }),
              "tolerance must be positive and non-zero");
    EXPECT_EQ(TextOf([] { CurveFitter().SetTolerance(std::nanf("")); }),
              "tolerance must be positive and non-zero");
    EXPECT_EQ(TextOf([] { CurveFitter().SetComponentCount(0); }),
              "component count must be between 1 and 4");
    EXPECT_EQ(TextOf([] { CurveFitter().SetComponentCount(5); }),
              "component count must be between 1 and 4");
    EXPECT_EQ(TextOf([] { CurveFitter().SetMaxSolverComplexity(-1); }),
              "maximum solver complexity must be non-negative");
}

}  // namespace

}  // namespace Qel::LeastSquares
