#include <AnimUtil/LeastSquares/CurveFitter.h>

#include "LeastSquares/CurveKey.h"
#include "LeastSquares/KeyReduction.h"
#include "LeastSquares/MinQueue.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace Qel::LeastSquares {

namespace {

constexpr float kShortestGap = 0.001f;

/// A time that is no number comes behind all others.
bool IsEarlier(const CurveSample& a, const CurveSample& b) {
    return std::isnan(b.time) ? !std::isnan(a.time) : a.time < b.time;
}

/// (a - b) over the time between them, the reciprocal taken first.
Components Slope(const Components& a, const Components& b, float aTime, float bTime) {
    const float inverse = 1.0f / (aTime - bTime);
    Components slope{};
    for (std::size_t c = 0; c < slope.size(); ++c) slope[c] = (a[c] - b[c]) * inverse;
    return slope;
}

Components Mean(const Components& a, const Components& b) {
    Components mean{};
    for (std::size_t c = 0; c < mean.size(); ++c) mean[c] = (a[c] + b[c]) / 2.0f;
    return mean;
}

/// Which of two samples that stand too close goes: the ends of the curve stay, then what carries
/// less.
bool SecondGoes(const CurveSample& first, const CurveSample& second, bool firstIsStart,
                bool secondIsEnd) {
    if (firstIsStart) return true;
    if (secondIsEnd) return false;
    if (second.soft) return true;
    if (first.soft) return false;
    if (second.tangentContinuous) return true;
    if (first.tangentContinuous) return false;
    if (second.positionContinuous) return true;
    return !first.positionContinuous;
}

}  // namespace

void CurveFitter::SetTolerance(float value) {
    if (!(value >= FLT_EPSILON)) throw Error("tolerance must be positive and non-zero");
    tolerance = value;
}

void CurveFitter::SetComponentCount(int value) {
    if (value < 1 || value > 4) throw Error("component count must be between 1 and 4");
    componentCount = value;
}

void CurveFitter::SetMaxSolverComplexity(int value) {
    if (value < 0) throw Error("maximum solver complexity must be non-negative");
    maxSolverComplexity = value;
}

void CurveFitter::AddSample(float time, const Components& position) {
    CurveSample sample;
    sample.time = time;
    sample.SetPosition(position, position);
    samples.push_back(sample);
}

void CurveFitter::AddCorner(float time, const Components& position) {
    AddSample(time, position);
    samples.back().tangentContinuous = false;
}

void CurveFitter::AddStep(float time, const Components& before, const Components& after) {
    CurveSample sample;
    sample.time = time;
    sample.positionContinuous = false;
    sample.tangentContinuous = false;
    sample.SetPosition(before, after);
    samples.push_back(sample);
}

void CurveFitter::Solve(std::vector<CurveSegment>& result) {
    Prepare();
    KeyList keys;
    keys.samples = &samples;
    if (IsFlat()) {
        const Components level = samples.front().positionAfter;
        keys.Append(0);
        keys.Append(static_cast<int>(samples.size()) - 1);
        for (CurveKey& key : keys.keys) {
            key.positionBefore = key.positionAfter = level;
            key.tangentBefore = key.tangentAfter = {};
        }
    } else {
        if (effort != nullptr) effort->AddCurve(samples.size());
        MakeDerivatives();
        keys.keys.reserve(samples.size());
        for (std::size_t i = 0; i < samples.size(); ++i)
            if (!samples[i].soft) keys.Append(static_cast<int>(i));
        KeyReduction(keys, {componentCount, tangentWeight, softSampleWeight, maxSolverComplexity},
                     tolerance, effort)
            .Run();
    }
    result.clear();
    result.reserve(keys.CountSegments());
    for (int a = keys.first; keys.At(a).next != -1; a = keys.At(a).next)
        result.push_back(keys.SegmentBetween(a, keys.At(a).next));
}

void CurveFitter::Prepare() {
    if (samples.size() < 2)
        throw Error("at least two samples need to be added to the curve fitter before solving");
    if (!std::is_sorted(samples.begin(), samples.end(), IsEarlier))
        std::stable_sort(samples.begin(), samples.end(), IsEarlier);
    if (!(samples.back().time - samples.front().time >= kShortestGap))
        throw Error("animation time is too short");
    Thin();
    ForceEnds();
}

void CurveFitter::Thin() {
    // The narrowest gap goes first, the earlier of equal ones; the samples are linked so that each
    // removal is cheap.
    const auto isNarrow = [](const CurveSample& a, const CurveSample& b) {
        return b.time - a.time < kShortestGap;
    };
    if (std::adjacent_find(samples.begin(), samples.end(), isNarrow) == samples.end()) return;
    const int count = static_cast<int>(samples.size());
    std::vector<int> previous(samples.size());
    std::vector<int> next(samples.size());
    MinQueue gaps(samples.size());  // each under its first sample
    const auto at = [](int i) { return static_cast<std::size_t>(i); };
    const auto measure = [&](int i) {
        const int behind = next[at(i)];
        if (behind != -1 && isNarrow(samples[at(i)], samples[at(behind)]))
            gaps.Set(i, samples[at(behind)].time - samples[at(i)].time);
        else
            gaps.Remove(i);
    };
    for (int i = 0; i < count; ++i) {
        previous[at(i)] = i - 1;
        next[at(i)] = i + 1 < count ? i + 1 : -1;
        measure(i);
    }
    std::vector<bool> removed(samples.size());
    for (int first = gaps.GetFront(); first != -1; first = gaps.GetFront()) {
        const int second = next[at(first)];
        const int gone = SecondGoes(samples[at(first)], samples[at(second)],
                                    previous[at(first)] == -1, next[at(second)] == -1)
                             ? second
                             : first;
        removed[at(gone)] = true;
        const int before = previous[at(gone)];
        const int behind = next[at(gone)];
        gaps.Remove(gone);
        if (behind != -1) previous[at(behind)] = before;
        next[at(before)] = behind;
        measure(before);
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (!removed[i]) samples[kept++] = samples[i];
    samples.resize(kept);
}

void CurveFitter::ForceEnds() {
    for (CurveSample* end : {&samples.front(), &samples.back()}) {
        end->soft = false;
        end->positionContinuous = true;
        end->tangentContinuous = true;
    }
    samples.front().positionBefore = samples.front().positionAfter;
    samples.back().positionAfter = samples.back().positionBefore;
}

bool CurveFitter::IsFlat() const {
    const Components& level = samples.front().positionAfter;
    const float toleranceSquared = tolerance * tolerance;
    const auto distance = [&](const Components& position) {
        float sum = 0;
        for (std::size_t c = 0; c < static_cast<std::size_t>(componentCount); ++c)
            sum += (level[c] - position[c]) * (level[c] - position[c]);
        return sum;
    };
    // Only a distance that exceeds the tolerance bends the curve: one that is no number does not.
    return std::none_of(samples.begin() + 1, samples.end(), [&](const CurveSample& sample) {
        return !sample.soft && (distance(sample.positionBefore) > toleranceSquared ||
                                distance(sample.positionAfter) > toleranceSquared);
    });
}

void CurveFitter::MakeDerivatives() {
    const std::size_t count = samples.size();
    for (std::size_t i = 0; i < count; ++i) {
        CurveSample& sample = samples[i];
        const CurveSample* previous = i > 0 ? &samples[i - 1] : looping ? &samples.back() : nullptr;
        const CurveSample* next = i + 1 < count ? &samples[i + 1]
                                  : looping     ? &samples.front()
                                                : nullptr;
        Components back{};
        Components forward{};
        if (previous != nullptr)
            back =
                Slope(sample.positionBefore, previous->positionAfter, sample.time, previous->time);
        if (next != nullptr)
            forward = Slope(next->positionBefore, sample.positionAfter, next->time, sample.time);
        if (!sample.tangentContinuous) {
            if (previous == nullptr || next == nullptr)
                throw Error("failed to generate discontinuous sample derivatives");
            sample.SetTangent(back, forward);
        } else {
            if (previous == nullptr && next == nullptr)
                throw Error("failed to generate continuous sample derivative");
            const Components tangent = previous == nullptr ? forward
                                       : next == nullptr   ? back
                                                           : Mean(back, forward);
            sample.SetTangent(tangent, tangent);
        }
    }
}

}  // namespace Qel::LeastSquares
