// Fits of any samples: within the tolerance, in segments that follow one another, the same one
// each time, in time that grows with the samples alone.

#include "AnimUtil/LeastSquares/FitProblem.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

using namespace Qel::LeastSquares;

constexpr std::size_t kMostSamples = 2000;
constexpr std::size_t kMostHeldSamples = 30000;
/// Under the sanitizers on a busy machine; held samples take 1.3 microseconds in a release.
constexpr double kSecondsPerSample = 0.0003;

struct Problem : FitProblem {
    bool isTame = true;  ///< values and times of a size at which single precision is enough
    /// Stretches of zeros, longer than the input could spell out, lie between the samples.
    bool isHeld = false;
};

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "CurveFitterFuzzer: %s\n", what.c_str());
    std::abort();
}

float TakeValue(FuzzedDataProvider& input, bool isTame) {
    if (isTame) return static_cast<float>(input.ConsumeIntegral<std::int16_t>()) / 256;
    const auto bits = input.ConsumeIntegral<std::uint32_t>();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

Components TakeValues(FuzzedDataProvider& input, const Problem& problem) {
    Components values{};
    for (std::size_t c = 0; c < static_cast<std::size_t>(problem.components); ++c)
        values[c] = TakeValue(input, problem.isTame);
    return values;
}

/// Appends as many zeros as `code` says, evenly spaced.
float Hold(Problem& problem, float time, unsigned code) {
    const float step = (code & 1) != 0 ? 1.0f / 60 : 1.0f;
    const std::size_t count = std::min<std::size_t>((code >> 1) * std::size_t{64},
                                                    kMostHeldSamples - problem.samples.size());
    for (std::size_t i = 0; i < count; ++i) {
        time += step;
        CurveSample sample;
        sample.time = time;
        problem.samples.push_back(sample);
    }
    return time;
}

Problem TakeProblem(FuzzedDataProvider& input) {
    static constexpr float kTolerances[] = {0.001f, 0.01f, 0.1f, 1.0f, 0.00001f, 1.2e-7f};
    Problem problem;
    problem.tolerance = input.PickValueInArray(kTolerances);
    problem.components = input.ConsumeIntegralInRange(1, 4);
    problem.looping = input.ConsumeBool();
    problem.maxSolverComplexity = input.ConsumeBool() ? input.ConsumeIntegralInRange(0, 40) : 0;
    problem.isTame = input.ConsumeIntegralInRange(0, 7) != 0;
    problem.isHeld = problem.isTame && (input.ConsumeIntegralInRange(0, 255) & 3) == 3;
    const std::size_t most = problem.isHeld ? kMostHeldSamples : kMostSamples;
    float time = 0;
    while (input.remaining_bytes() > 2 && problem.samples.size() < most) {
        const auto kind = input.ConsumeIntegral<std::uint8_t>();
        CurveSample sample;
        sample.soft = (kind & 7) == 7;
        sample.positionContinuous = (kind & 24) != 24;
        sample.tangentContinuous = sample.positionContinuous && (kind & 96) != 96;
        time += problem.isTame
                    ? static_cast<float>(input.ConsumeIntegral<std::uint8_t>()) / 512 + 0.002f
                    : TakeValue(input, false);
        sample.time = time;
        sample.positionBefore = TakeValues(input, problem);
        sample.positionAfter =
            sample.positionContinuous ? sample.positionBefore : TakeValues(input, problem);
        problem.samples.push_back(sample);
        if (problem.isHeld) time = Hold(problem, time, input.ConsumeIntegral<std::uint8_t>());
    }
    return problem;
}

/// "" and the segments, or the words of a refusal.
std::string Fit(const Problem& problem, std::vector<CurveSegment>& segments) {
    try {
        segments = Qel::LeastSquares::Fit(problem);
        return "";
    } catch (const Error& failure) {
        if (*failure.what() == '\0') Fail("refused without a word");
        return failure.what();
    }
}

void CheckSame(const std::vector<CurveSegment>& a, const std::vector<CurveSegment>& b) {
    if (a.size() != b.size()) Fail("two fits of one problem");
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::memcmp(&a[i], &b[i], sizeof a[i]) != 0) Fail("two fits of one problem");
}

/// Within the tolerance, but for what rounds off where a segment is evaluated; at a key that stayed
/// nothing else keeps them apart.
bool IsWithin(const CurveSegment& segment, float time, const Components& wanted,
              const Problem& problem) {
    const Components value = segment.Evaluate(time);
    const double length = static_cast<double>(segment.endTime) - segment.startTime;
    double sum = 0;
    double size = 0;
    for (std::size_t c = 0; c < static_cast<std::size_t>(problem.components); ++c) {
        const double apart = static_cast<double>(value[c]) - wanted[c];
        sum += apart * apart;
        size += std::fabs(segment.startPosition[c]) + std::fabs(segment.endPosition[c]) +
                length * (std::fabs(segment.startTangent[c]) + std::fabs(segment.endTangent[c]));
    }
    return std::sqrt(sum) <= problem.tolerance * 1.00001 + 1e-6 * size;
}

void CheckCurve(const Problem& problem, const std::vector<CurveSegment>& segments) {
    const float first = problem.samples.front().time;
    const float last = problem.samples.back().time;
    if (segments.empty()) Fail("no segment");
    if (segments.front().startTime != first || segments.back().endTime != last)
        Fail("the ends are elsewhere");
    for (std::size_t i = 1; i < segments.size(); ++i)
        if (segments[i].startTime != segments[i - 1].endTime) Fail("a gap");
    std::size_t at = 0;
    for (const CurveSample& sample : problem.samples) {
        if (sample.soft || sample.time == first || sample.time == last) continue;
        while (segments[at].endTime < sample.time) ++at;
        const bool atEnd = sample.time == segments[at].endTime;
        if (!IsWithin(segments[at], sample.time,
                      atEnd ? sample.positionBefore : sample.positionAfter, problem))
            Fail("a sample at " + std::to_string(sample.time) + " is beyond the tolerance");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const Problem problem = TakeProblem(input);
    std::vector<CurveSegment> segments;
    const std::clock_t start = std::clock();
    const std::string failure = Fit(problem, segments);
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    const double samples = static_cast<double>(problem.samples.size());
    if (seconds > 0.5 + kSecondsPerSample * samples)
        Fail("it took " + std::to_string(seconds) + " s");
    if (problem.isHeld) return 0;

    std::vector<CurveSegment> again;
    if (Fit(problem, again) != failure) Fail("two answers");
    CheckSame(segments, again);
    if (failure.empty() && problem.isTame) CheckCurve(problem, segments);
    return 0;
}
