#include "LeastSquares/SilentSpans.h"

#include <AnimUtil/LeastSquares/CurveFitter.h>
#include <AnimUtil/LeastSquares/LeastSquaresError.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

#include "LeastSquares/KeyReduction.h"

namespace Qel::LeastSquares {
namespace {

/// Samples of one component, one to the unit of time, and keys on some of them.
struct Series {
    Series(const std::vector<float>& values, const std::vector<int>& keyed) {
        for (const float value : values) {
            CurveSample sample;
            sample.time = static_cast<float>(samples.size());
            sample.SetPosition({value}, {value});
            samples.push_back(sample);
        }
        keys.samples = &samples;
        for (const int sample : keyed) keys.Append(sample);
    }
    bool IsSolvedByZero() const { return SilentSpans(keys).IsSolvedByZero(keys.first, keys.last); }
    bool IsSilentSegment() const { return SilentSpans(keys).IsSilentSegment(0, 1); }
    std::vector<CurveSample> samples;
    KeyList keys;
};

TEST(SilentSpans, ZerosOfEitherSignAreSilent) {
    EXPECT_TRUE(Series({0, -0.0f, 0, 0, 0, 0}, {0, 3, 5}).IsSolvedByZero());
    EXPECT_TRUE(Series({0, -0.0f, 0}, {0, 2}).IsSilentSegment());
}

TEST(SilentSpans, AnySampleOrSlopeBetweenTheEndsIsHeard) {
    EXPECT_FALSE(Series({0, 0, 1e-45f, 0, 0, 0}, {0, 3, 5}).IsSolvedByZero());
    EXPECT_FALSE(Series({0, 1e-45f, 0}, {0, 2}).IsSilentSegment());
    Series sloping({0, 0, 0, 0, 0, 0}, {0, 3, 5});
    sloping.samples[4].SetTangent({0, 1}, {0, 1});
    EXPECT_FALSE(sloping.IsSolvedByZero());
}

TEST(SilentSpans, AnEndIsHeardUnlessTheNextKeyStandsBesideIt) {
    EXPECT_FALSE(Series({1, 0, 0, 0, 0, 0}, {0, 3, 5}).IsSolvedByZero());
    EXPECT_TRUE(Series({1, 0, 0, 0, 0, 0}, {0, 1, 5}).IsSolvedByZero());
    EXPECT_FALSE(Series({0, 0, 0, 0, 0, 1}, {0, 3, 5}).IsSolvedByZero());
    EXPECT_TRUE(Series({0, 0, 0, 0, 0, 1}, {0, 4, 5}).IsSolvedByZero());
    EXPECT_FALSE(Series({0, 0, 1}, {0, 2}).IsSilentSegment());
    // At a corner the slope of the end counts, by the rounding of the weights.
    Series corner({1, 0, 0, 0, 0, 0}, {0, 1, 5});
    corner.samples[1].tangentContinuous = false;
    EXPECT_FALSE(corner.IsSolvedByZero());
}

TEST(SilentSpans, NothingIsSilentInACurveWithoutEnd) {
    Series endless({0, 0, 0, 0, 0, 0}, {0, 3, 5});
    endless.samples[5].time = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(endless.IsSolvedByZero());
}

/// The reduction as it is told: every span is solved whole, and every sample is looked at.
class PlainReduction {
  public:
    PlainReduction(KeyList& list, const SolverSettings& solverSettings, float tolerance)
        : keys(list),
          settings(solverSettings),
          toleranceSquared(tolerance * tolerance),
          solver(list, solverSettings),
          queue(list.keys.size()) {}

    void Run() {
        for (int k = keys.first; k != -1; k = keys.At(k).next)
            if (k != keys.first && k != keys.last && keys.SampleAt(k).positionContinuous)
                queue.Set(k, Cost(k));
        for (int key = queue.GetFront(); key != -1; key = queue.GetFront()) {
            queue.Remove(key);
            Remove(key);
        }
    }

  private:
    float Cost(int k) const {
        const CurveKey& key = keys.At(k);
        const CurveSegment segment = keys.SegmentBetween(key.previous, key.next);
        const Components value = segment.Evaluate(keys.SampleAt(k).time);
        const Components slope = segment.EvaluateDerivative(keys.SampleAt(k).time);
        float cost = 0;
        for (std::size_t c = 0; c < 4; ++c) {
            const float a = value[c] - key.positionAfter[c];
            const float b = slope[c] - (key.tangentAfter[c] + key.tangentBefore[c]) / 2.0f;
            cost += a * a + b * b;
        }
        return cost;
    }

    void Remove(int key) {
        int left = keys.At(key).previous;
        int right = keys.At(key).next;
        for (int i = 0; i < 4 && left != keys.first; ++i) left = keys.At(left).previous;
        for (int i = 0; i < 3 && right != keys.last; ++i) right = keys.At(right).next;
        const std::vector<CurveKey> before = keys.keys;
        keys.Unlink(key);
        solver.Solve(left, right);
        bool isWithin = true;
        for (int a = left; a != right; a = keys.At(a).next)
            isWithin = isWithin && IsWithin(a, keys.At(a).next);
        if (!isWithin) keys.keys = before;
        for (int k = keys.At(left).next; isWithin && k != right; k = keys.At(k).next)
            if (queue.Holds(k)) queue.Set(k, Cost(k));
    }

    bool IsWithin(int a, int b) const {
        const CurveSegment segment = keys.SegmentBetween(a, b);
        for (int i = keys.At(a).sample; i <= keys.At(b).sample; ++i) {
            const CurveSample& sample = (*keys.samples)[static_cast<std::size_t>(i)];
            const Components value = segment.Evaluate(sample.time);
            float sum = 0;
            for (std::size_t c = 0; c < static_cast<std::size_t>(settings.componentCount); ++c) {
                const float apart = value[c] - (i == keys.At(b).sample ? sample.positionBefore[c]
                                                                       : sample.positionAfter[c]);
                sum += apart * apart;
            }
            if (!sample.soft && !(sum <= toleranceSquared)) return false;
        }
        return true;
    }

    KeyList& keys;
    SolverSettings settings;
    float toleranceSquared;
    SpanSolver solver;
    MinQueue queue;
};

/// Zeros for the most part, of both signs, with samples, slopes, corners and steps among them.
std::vector<CurveSample> MakeHeld(std::mt19937& random, int components) {
    static constexpr float kSteps[] = {1, 1.0f / 60, 1000, 1e6f};  // far apart, zeros get signs
    const float step = kSteps[random() % 4];
    std::vector<CurveSample> samples(20 + random() % 60);
    float time = 0;
    for (CurveSample& sample : samples) {
        sample.time = time;
        time += random() % 4 == 0 ? step * 1.3f : step;
        const auto kind = static_cast<unsigned>(random() % 24);
        sample.positionContinuous = kind != 0;
        sample.tangentContinuous = kind > 2;
        for (std::size_t c = 0; c < static_cast<std::size_t>(components); ++c) {
            const auto draw = [&] { return static_cast<float>(random() % 2001) / 1000 - 1; };
            const float value = kind % 12 == 5 ? draw() : kind == 7 ? -0.0f : 0.0f;
            sample.positionBefore[c] = value;
            sample.positionAfter[c] = kind == 0 ? draw() : value;
            if (kind == 11) sample.tangentBefore[c] = sample.tangentAfter[c] = draw();
        }
    }
    samples.front().positionContinuous = samples.back().positionContinuous = true;
    samples.front().tangentContinuous = samples.back().tangentContinuous = true;
    return samples;
}

/// The bytes of the curve that is left, or why there is none.
template <class Reduction>
std::string Reduce(KeyList keys, const SolverSettings& settings, float tolerance) {
    try {
        Reduction(keys, settings, tolerance).Run();
    } catch (const Error& failure) {
        return failure.what();
    }
    std::string bytes;
    for (int k = keys.first; k != keys.last; k = keys.At(k).next) {
        const CurveSegment segment = keys.SegmentBetween(k, keys.At(k).next);
        bytes.append(reinterpret_cast<const char*>(&segment), sizeof segment);
    }
    return bytes;
}

TEST(SilentSpans, KeysAreThoseOfThePlainRuleToTheBit) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const SolverSettings settings{.componentCount = 1 + round % 4,
                                      .maxSolverComplexity = round % 3};
        std::vector<CurveSample> samples = MakeHeld(random, settings.componentCount);
        KeyList keys;
        keys.samples = &samples;
        for (int i = 0; i < static_cast<int>(samples.size()); ++i) keys.Append(i);
        const float tolerance = round % 2 == 0 ? 0.001f : 0.5f;
        ASSERT_TRUE(Reduce<KeyReduction>(keys, settings, tolerance) ==
                    Reduce<PlainReduction>(keys, settings, tolerance))
            << "round " << round;
    }
}

TEST(SilentSpans, AHoldAtZeroTakesTimeInProportionToItsLength) {
    // Looking at the samples of each removal again would be five thousand million looks.
    constexpr int kCount = 100000;
    FitEffort effort(0, 16);
    CurveFitter fitter;
    fitter.SetEffort(&effort);
    fitter.SetComponentCount(1);
    for (int i = 0; i < kCount; ++i)
        fitter.AddSample(static_cast<float>(i), {i == 777 ? 1.0f : 0.0f});
    std::vector<CurveSegment> segments;
    fitter.Solve(segments);
    ASSERT_EQ(segments.size(), 4u);
    EXPECT_EQ(segments.back().startTime, 778);
    EXPECT_EQ(segments.back().endTime, kCount - 1);
    EXPECT_EQ(segments.back().endPosition, Components{});
}

}  // namespace
}  // namespace Qel::LeastSquares
