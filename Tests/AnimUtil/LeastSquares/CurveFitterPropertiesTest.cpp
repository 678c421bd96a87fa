#include "AnimUtil/LeastSquares/FitProblem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

// What holds for every fit, over curves of several families from fixed seeds.

namespace Qel::LeastSquares {
namespace {

float Draw(std::mt19937& random, float limit) {
    return limit * (static_cast<float>(random() % 20001) / 10000 - 1);
}

Components DrawValue(std::mt19937& random, int components, float limit) {
    Components value{};
    for (int c = 0; c < components; ++c) value[static_cast<std::size_t>(c)] = Draw(random, limit);
    return value;
}

/// Swings with noise, corners, steps and soft samples, at uneven times.
FitProblem MakeProblem(unsigned seed) {
    std::mt19937 random(seed);
    FitProblem problem;
    problem.components = 1 + static_cast<int>(seed % 4);
    problem.tolerance = seed % 3 == 0 ? 0.05f : 0.002f;
    problem.looping = seed % 5 == 0;
    problem.maxSolverComplexity = seed % 7 == 0 ? 3 : 0;
    const float noise = seed % 2 == 0 ? 0.0f : problem.tolerance;
    float time = Draw(random, 5);
    for (int i = 0; i < 90; ++i) {
        CurveSample sample;
        sample.time = time;
        time += 0.01f + static_cast<float>(random() % 1000) / 10000;
        Components value = DrawValue(random, problem.components, noise);
        for (int c = 0; c < problem.components; ++c)
            value[static_cast<std::size_t>(c)] +=
                static_cast<float>(std::sin(double{sample.time} * (1 + c)));
        const auto kind = static_cast<unsigned>(random() % 20);
        sample.tangentContinuous = kind > 2;
        sample.positionContinuous = kind > 1;
        sample.soft = kind == 7 || kind == 8;
        sample.SetPosition(value, kind > 1 ? value : DrawValue(random, problem.components, 1));
        problem.samples.push_back(sample);
    }
    return problem;
}

/// By the fitter's own arithmetic: the sum of squares in single precision.
bool IsWithin(const Components& value, const Components& wanted, const FitProblem& problem) {
    float sum = 0;
    for (std::size_t c = 0; c < static_cast<std::size_t>(problem.components); ++c)
        sum += (value[c] - wanted[c]) * (value[c] - wanted[c]);
    return sum <= problem.tolerance * problem.tolerance;
}

bool IsEnd(const FitProblem& problem, const CurveSample& sample) {
    return sample.time == problem.samples.front().time ||
           sample.time == problem.samples.back().time;
}

template <class Check>
void ForProblems(Check check) {
    for (unsigned seed = 1; seed <= 36; ++seed) {
        SCOPED_TRACE(seed);
        check(MakeProblem(seed));
    }
}

TEST(CurveFitterProperties, EveryHardSampleIsWithinTheTolerance) {
    ForProblems([](const FitProblem& problem) {
        const auto segments = Fit(problem);
        for (const CurveSample& sample : problem.samples) {
            if (sample.soft || IsEnd(problem, sample)) continue;
            for (const CurveSegment& segment : segments) {
                if (sample.time < segment.startTime || sample.time > segment.endTime) continue;
                const bool atEnd = sample.time == segment.endTime;
                EXPECT_TRUE(IsWithin(segment.Evaluate(sample.time),
                                     atEnd ? sample.positionBefore : sample.positionAfter, problem))
                    << sample.time;
            }
        }
    });
}

TEST(CurveFitterProperties, SegmentsFollowOneAnotherFromTheFirstSampleToTheLast) {
    ForProblems([](const FitProblem& problem) {
        const auto segments = Fit(problem);
        EXPECT_EQ(segments.front().startTime, problem.samples.front().time);
        EXPECT_EQ(segments.front().startPosition, problem.samples.front().positionAfter);
        EXPECT_EQ(segments.back().endTime, problem.samples.back().time);
        EXPECT_EQ(segments.back().endPosition, problem.samples.back().positionBefore);
        for (std::size_t i = 1; i < segments.size(); ++i)
            EXPECT_EQ(segments[i - 1].endTime, segments[i].startTime);
    });
}

TEST(CurveFitterProperties, StepsAreKeptAndTheCurveBreaksNowhereElse) {
    ForProblems([](const FitProblem& problem) {
        const auto segments = Fit(problem);
        std::size_t next = 1;
        for (const CurveSample& sample : problem.samples) {
            while (next < segments.size() && segments[next].startTime < sample.time) ++next;
            const bool isKey = next < segments.size() && segments[next].startTime == sample.time;
            const bool isStep =
                !sample.positionContinuous && !sample.soft && !IsEnd(problem, sample);
            EXPECT_TRUE(isKey || !isStep) << sample.time;
            if (!isKey) continue;
            EXPECT_FALSE(sample.soft) << sample.time;
            const CurveSegment& before = segments[next - 1];
            const CurveSegment& after = segments[next];
            EXPECT_TRUE(!sample.positionContinuous || before.endPosition == after.startPosition);
            EXPECT_TRUE(!sample.tangentContinuous || before.endTangent == after.startTangent);
        }
    });
}

TEST(CurveFitterProperties, TheOrderInWhichSamplesAreAddedDoesNotMatter) {
    ForProblems([](FitProblem problem) {
        const auto wanted = Fit(problem);
        std::mt19937 random(2);
        std::shuffle(problem.samples.begin(), problem.samples.end(), random);
        const auto shuffled = Fit(problem);
        ASSERT_EQ(shuffled.size(), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            EXPECT_EQ(shuffled[i].endTime, wanted[i].endTime);
            EXPECT_EQ(shuffled[i].endPosition, wanted[i].endPosition);
            EXPECT_EQ(shuffled[i].endTangent, wanted[i].endTangent);
        }
    });
}

TEST(CurveFitterProperties, ACurveOfTwiceTheSizeHasTheSameKeysAtTwiceTheTolerance) {
    // Doubling is exact in floats, so that every step of the fit is the same.
    ForProblems([](FitProblem problem) {
        const auto wanted = Fit(problem);
        for (CurveSample& sample : problem.samples)
            for (Components* value : {&sample.positionBefore, &sample.positionAfter})
                for (float& component : *value) component *= 2;
        problem.tolerance *= 2;
        const auto doubled = Fit(problem);
        ASSERT_EQ(doubled.size(), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            EXPECT_EQ(doubled[i].endTime, wanted[i].endTime);
            for (std::size_t c = 0; c < 4; ++c) {
                EXPECT_EQ(doubled[i].endPosition[c], 2 * wanted[i].endPosition[c]);
                EXPECT_EQ(doubled[i].startTangent[c], 2 * wanted[i].startTangent[c]);
            }
        }
    });
}

TEST(CurveFitterProperties, ComponentsThatAreNotFittedStayZero) {
    ForProblems([](const FitProblem& problem) {
        for (const CurveSegment& segment : Fit(problem))
            for (std::size_t c = static_cast<std::size_t>(problem.components); c < 4; ++c)
                for (const Components* part : {&segment.startPosition, &segment.startTangent,
                                               &segment.endPosition, &segment.endTangent})
                    EXPECT_EQ((*part)[c], 0);
    });
}

}  // namespace
}  // namespace Qel::LeastSquares
