#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include <AnimUtil/LeastSquares/CurveFitter.h>

// What a fit costs for each sample, how many keys it keeps and how near it comes to its tolerance,
// for curves of five families with 100 to 100,000 samples, 60 to the second. The time for each
// sample should not grow with their number.

namespace {

using Qel::LeastSquares::Components;
using Qel::LeastSquares::CurveFitter;
using Qel::LeastSquares::CurveSample;
using Qel::LeastSquares::CurveSegment;

constexpr float kTolerance = 0.001f;
constexpr double kSamplesPerSecond = 60;

/// A family tells the sample that stands at `time`, the `index`-th one.
using Family = CurveSample (*)(double time, int index, std::mt19937& random);

CurveSample Plain(double value) {
    CurveSample sample;
    const auto rounded = static_cast<float>(value);
    sample.SetPosition({rounded}, {rounded});
    return sample;
}

double Symmetric(std::mt19937& random) {
    return static_cast<double>(random()) / 2147483648.0 - 1;
}

CurveSample Sine(double time, int, std::mt19937&) {
    return Plain(std::sin(2 * time));
}

/// Swings of several speeds and sizes, and the shake of a recording below the tolerance.
CurveSample Motion(double time, int, std::mt19937& random) {
    return Plain(0.9 * std::sin(0.7 * time) + 0.3 * std::sin(2.9 * time + 1) +
                 0.05 * std::sin(9.1 * time + 2) + 0.01 * std::sin(23 * time) +
                 0.0003 * Symmetric(random));
}

/// A jump every half second.
CurveSample Steps(double time, int index, std::mt19937&) {
    const double before = std::floor(time * 2 - 0.5 / kSamplesPerSecond);
    if (index == 0 || index % 30 != 0) return Plain(std::fmod(std::floor(time * 2), 7));
    CurveSample sample;
    sample.positionContinuous = false;
    sample.tangentContinuous = false;
    sample.SetPosition({static_cast<float>(std::fmod(before, 7))},
                       {static_cast<float>(std::fmod(before + 1, 7))});
    return sample;
}

/// Up and down in straight lines, half a second each.
CurveSample Corners(double time, int index, std::mt19937&) {
    CurveSample sample = Plain(std::fabs(std::fmod(time, 1.0) - 0.5));
    sample.tangentContinuous = index % 30 != 0;
    return sample;
}

CurveSample Noise(double, int, std::mt19937& random) {
    return Plain(Symmetric(random));
}

/// One straight line, which loses all its keys.
CurveSample Line(double time, int, std::mt19937&) {
    return Plain(0.01 * time);
}

std::vector<CurveSample> MakeSamples(Family family, int count) {
    std::mt19937 random(1);
    std::vector<CurveSample> samples;
    for (int i = 0; i < count; ++i) {
        const double time = i / kSamplesPerSecond;
        samples.push_back(family(time, i, random));
        samples.back().time = static_cast<float>(time);
    }
    return samples;
}

/// The greatest distance between the curve and a sample.
double GreatestError(const std::vector<CurveSegment>& segments,
                     const std::vector<CurveSample>& samples) {
    double greatest = 0;
    std::size_t s = 0;
    for (const CurveSample& sample : samples) {
        while (segments[s].endTime < sample.time) ++s;
        const CurveSegment& segment = segments[s];
        const float wanted =
            segment.endTime == sample.time ? sample.positionBefore[0] : sample.positionAfter[0];
        greatest = std::max(greatest,
                            std::fabs(double{segment.Evaluate(sample.time)[0]} - double{wanted}));
    }
    return greatest;
}

void FitCurve(benchmark::State& state, Family family) {
    const std::vector<CurveSample> samples = MakeSamples(family, static_cast<int>(state.range(0)));
    std::vector<CurveSegment> segments;
    for (auto _ : state) {
        CurveFitter fitter;
        fitter.SetTolerance(kTolerance);
        fitter.SetComponentCount(1);
        for (const CurveSample& sample : samples) fitter.AddSample(sample);
        fitter.Solve(segments);
    }
    state.counters["keys"] = static_cast<double>(segments.size() + 1);
    state.counters["error/tolerance"] = GreatestError(segments, samples) / double{kTolerance};
    state.counters["per_sample"] = benchmark::Counter(
        static_cast<double>(samples.size()),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

#define FIT(family)                             \
    BENCHMARK_CAPTURE(FitCurve, family, family) \
        ->RangeMultiplier(10)                   \
        ->Range(100, 100000)                    \
        ->Unit(benchmark::kMillisecond)

FIT(Sine);
FIT(Motion);
FIT(Steps);
FIT(Corners);
FIT(Noise);
FIT(Line);

}  // namespace
