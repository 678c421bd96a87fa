#include "LeastSquares/KeyReduction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace Qel::LeastSquares {
namespace {

/// A key on each of the samples.
struct Keyed {
    explicit Keyed(std::vector<CurveSample> all) : samples(std::move(all)) {
        keys.samples = &samples;
        for (std::size_t i = 0; i < samples.size(); ++i) keys.Append(static_cast<int>(i));
    }
    /// The samples on which keys stand after the reduction.
    std::vector<int> Reduce(float tolerance, int components = 1) {
        KeyReduction(keys, {.componentCount = components}, tolerance).Run();
        std::vector<int> left;
        for (int k = keys.first; k != -1; k = keys.At(k).next) left.push_back(keys.At(k).sample);
        return left;
    }
    std::vector<CurveSample> samples;
    KeyList keys;
};

template <class Value, class Slope>
std::vector<CurveSample> Sampled(int count, Value value, Slope slope) {
    std::vector<CurveSample> samples(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        CurveSample& sample = samples[static_cast<std::size_t>(i)];
        sample.time = static_cast<float>(i) / 4;
        sample.SetPosition({value(sample.time)}, {value(sample.time)});
        sample.SetTangent({slope(sample.time)}, {slope(sample.time)});
    }
    return samples;
}

float Line(float t) {
    return 2 * t;
}
float Two(float) {
    return 2;
}

TEST(KeyReduction, ALineKeepsItsEndsAlone) {
    EXPECT_EQ(Keyed(Sampled(30, Line, Two)).Reduce(1e-5f), (std::vector<int>{0, 29}));
}

TEST(KeyReduction, StepsAreNeverRemoved) {
    auto samples = Sampled(30, Line, Two);
    samples[7].positionContinuous = samples[20].positionContinuous = false;
    EXPECT_EQ(Keyed(samples).Reduce(1e-5f), (std::vector<int>{0, 7, 20, 29}));
}

TEST(KeyReduction, ACornerGoesWhereTheCurveDoesNotNeedIt) {
    auto samples = Sampled(30, Line, Two);
    samples[7].tangentContinuous = false;
    EXPECT_EQ(Keyed(samples).Reduce(1e-5f), (std::vector<int>{0, 29}));
    const auto bent = [](float t) { return std::fabs(t - 2); };
    samples = Sampled(17, bent, [](float t) { return t < 2 ? -1.0f : 1.0f; });
    samples[8].tangentContinuous = false;
    samples[8].SetTangent({-1}, {1});
    EXPECT_EQ(Keyed(samples).Reduce(1e-5f), (std::vector<int>{0, 8, 16}));
}

TEST(KeyReduction, OfEqualCostsTheEarlierKeyGoesFirst) {
    // Two bumps of one shape in one span, each of which could carry the other's loss.
    auto samples = Sampled(
        4, [](float) { return 0.0f; }, [](float) { return 0.0f; });
    samples[1].SetPosition({1}, {1});
    samples[2].SetPosition({1}, {1});
    Keyed keyed(samples);
    const std::vector<int> left = keyed.Reduce(0.4f);
    EXPECT_EQ(left, (std::vector<int>{0, 2, 3}));
}

TEST(KeyReduction, ARemovalReachesFourKeysBeyondItsNeighbours) {
    // A spike in the middle of a line. With no tolerance to speak of it cannot go, and all values
    // that were solved while it was tried are put back.
    auto samples = Sampled(21, Line, Two);
    samples[10].SetPosition({50}, {50});
    Keyed keyed(samples);
    const std::vector<int> left = keyed.Reduce(1e-5f);
    EXPECT_NE(std::find(left.begin(), left.end(), 10), left.end());
    for (const int k : left) {
        if (k == 10) continue;
        EXPECT_NEAR(keyed.keys.At(k).positionAfter[0],
                    Line(keyed.samples[static_cast<std::size_t>(k)].time), 1e-4f);
    }
}

TEST(KeyReduction, SoftSamplesAreNotHeldToTheTolerance) {
    auto samples = Sampled(30, Line, Two);
    samples[5].soft = true;
    samples[5].SetPosition({1000}, {1000});
    Keyed keyed(samples);
    // No key stands on a soft sample.
    keyed.keys.Unlink(5);
    EXPECT_EQ(keyed.Reduce(0.01f).size(), 2u);
    samples[5].soft = false;
    Keyed hard(samples);
    hard.keys.Unlink(5);
    EXPECT_GT(hard.Reduce(0.01f).size(), 2u);
}

TEST(KeyReduction, ComponentsBeyondTheCountAreNotHeldToTheTolerance) {
    auto samples = Sampled(30, Line, Two);
    for (std::size_t i = 0; i < samples.size(); i += 2)
        samples[i].SetPosition({Line(samples[i].time), 3}, {Line(samples[i].time), 3});
    EXPECT_EQ(Keyed(samples).Reduce(1e-4f, 1).size(), 2u);
    EXPECT_GT(Keyed(samples).Reduce(1e-4f, 2).size(), 20u);
}

}  // namespace
}  // namespace Qel::LeastSquares
