#include "LeastSquares/SilentSpans.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace Qel::LeastSquares {

namespace {

bool IsZero(const Components& value) {
    return value == Components{};
}

bool IsSilent(const CurveSample& sample) {
    return IsZero(sample.positionBefore) && IsZero(sample.positionAfter) &&
           IsZero(sample.tangentBefore) && IsZero(sample.tangentAfter);
}

/// The solution of the span in `alone`, which has none but zeros.
void SolveAlone(KeyList& alone, SpanSolver& solver) {
    for (CurveKey& key : alone.keys) {
        key.positionBefore = key.tangentBefore = {};
        key.positionAfter = key.tangentAfter = {};
    }
    solver.Solve(alone.first, alone.last);
}

}  // namespace

SilentSpans::SilentSpans(const KeyList& list) : keys(list) {
    const std::vector<CurveSample>& samples = *list.samples;
    // The weights of a segment without end are no numbers, and nothing is silent then.
    const bool isEndless = !std::isfinite(samples.back().time - samples.front().time);
    soundsBefore.reserve(samples.size());
    int sounds = 0;
    for (const CurveSample& sample : samples) {
        soundsBefore.push_back(sounds);
        if (isEndless || !IsSilent(sample)) ++sounds;
    }
    if (soundsBefore.back() + 1 < static_cast<int>(samples.size())) spans.reserve(list.keys.size());
}

bool SilentSpans::AreSilentBetween(int left, int right) const {
    const auto from = static_cast<std::size_t>(keys.At(left).sample) + 1;
    const auto to = static_cast<std::size_t>(keys.At(right).sample);
    return soundsBefore[from] == soundsBefore[to];
}

bool SilentSpans::IsSolvedByZero(int left, int right) const {
    if (!AreSilentBetween(left, right)) return false;
    // An end has a say at the samples between it and its neighbour alone.
    const CurveKey& start = keys.At(left);
    const CurveKey& end = keys.At(right);
    const bool startCounts = !keys.AreApart(left, start.next);
    const bool endCounts = end.sample != keys.At(end.previous).sample + 1;
    return (!startCounts || (IsZero(start.positionAfter) && IsZero(start.tangentAfter))) &&
           (!endCounts || (IsZero(end.positionBefore) && IsZero(end.tangentBefore)));
}

void SilentSpans::SolveByZero(KeyList& list, int left, int right, int componentCount) {
    Span span;
    span.fill(-1);
    std::size_t count = 0;
    span[count++] = list.At(left).sample;
    for (int k = list.At(left).next;; k = list.At(k).next) {
        CurveKey& key = list.At(k);
        span[count++] = key.sample;
        if (k == right) break;
        for (Components* value :
             {&key.positionBefore, &key.tangentBefore, &key.positionAfter, &key.tangentAfter})
            std::fill_n(value->begin(), componentCount, 0.0f);
        key.silentSpan = static_cast<int>(spans.size());
    }
    spans.push_back(span);
}

bool SilentSpans::IsSilentSegment(int a, int b) const {
    const CurveKey& start = keys.At(a);
    const CurveKey& end = keys.At(b);
    return AreSilentBetween(a, b) && IsZero(start.positionAfter) && IsZero(start.tangentAfter) &&
           IsZero(end.positionBefore) && IsZero(end.tangentBefore) &&
           IsZero(keys.SampleAt(a).positionAfter) && IsZero(keys.SampleAt(b).positionBefore);
}

void SilentSpans::Settle(KeyList& list, const SolverSettings& settings) const {
    KeyList alone;
    alone.samples = list.samples;
    alone.keys.reserve(kMostKeys);
    std::unique_ptr<SpanSolver> solver;  // most curves need none
    int settled = -1;
    for (int k = list.first; k != -1; k = list.At(k).next) {
        CurveKey& key = list.At(k);
        if (key.silentSpan == -1) continue;
        if (key.silentSpan != settled) {
            settled = key.silentSpan;
            alone.keys.clear();
            alone.first = alone.last = -1;
            for (const int sample : spans[static_cast<std::size_t>(settled)])
                if (sample != -1) alone.Append(sample);
            if (!solver) solver = std::make_unique<SpanSolver>(alone, settings);
            SolveAlone(alone, *solver);
        }
        const auto same = std::find_if(alone.keys.begin(), alone.keys.end(),
                                       [&](const CurveKey& a) { return a.sample == key.sample; });
        const auto copy = [&](Components CurveKey::*field) {
            std::copy_n(((*same).*field).begin(), settings.componentCount, (key.*field).begin());
        };
        copy(&CurveKey::positionBefore);
        copy(&CurveKey::tangentBefore);
        copy(&CurveKey::positionAfter);
        copy(&CurveKey::tangentAfter);
    }
}

}  // namespace Qel::LeastSquares
