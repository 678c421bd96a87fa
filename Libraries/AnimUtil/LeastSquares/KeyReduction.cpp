#include "LeastSquares/KeyReduction.h"

#include "LeastSquares/HermiteBasis.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Qel::LeastSquares {

namespace {

/// How many keys beyond its neighbours a removal re-solves on either side.
constexpr int kReach = 4;

bool IsFinite(const Components& value) {
    return std::all_of(value.begin(), value.end(), [](float v) { return std::isfinite(v); });
}

}  // namespace

KeyReduction::KeyReduction(KeyList& list, const SolverSettings& solverSettings,
                           float curveTolerance, FitEffort* fitEffort)
    : keys(list),
      settings(solverSettings),
      toleranceSquared(curveTolerance * curveTolerance),
      effort(fitEffort),
      solver(list, solverSettings),
      silent(list),
      hasFiniteTimes(std::isfinite(list.SampleAt(list.last).time - list.SampleAt(list.first).time)),
      queue(list.keys.size()) {
    backup.reserve(2 * kReach + 3);
}

void KeyReduction::Run() {
    // The ends and the steps of a curve are never removed.
    for (int k = keys.first; k != -1; k = keys.At(k).next)
        if (k != keys.first && k != keys.last && keys.SampleAt(k).positionContinuous)
            queue.Set(k, RemovalCost(k));
    for (int key = queue.GetFront(); key != -1; key = queue.GetFront()) {
        queue.Remove(key);
        TryToRemove(key);
    }
    silent.Settle(keys, settings);
}

float KeyReduction::RemovalCost(int k) const {
    const CurveKey& key = keys.At(k);
    const CurveSegment segment = keys.SegmentBetween(key.previous, key.next);
    const Components value = segment.Evaluate(keys.SampleAt(k).time);
    const Components derivative = segment.EvaluateDerivative(keys.SampleAt(k).time);
    float cost = 0;
    for (std::size_t c = 0; c < value.size(); ++c) {
        const float distance = value[c] - key.positionAfter[c];
        const float slope = derivative[c] - (key.tangentAfter[c] + key.tangentBefore[c]) / 2.0f;
        cost += distance * distance + slope * slope;
    }
    return cost;
}

void KeyReduction::TryToRemove(int key) {
    const Span span = SpanAround(key);
    backup.clear();
    for (int k = span.left;; k = keys.At(k).next) {
        backup.push_back(keys.At(k));
        if (k == span.right) break;
    }
    keys.Unlink(key);
    Solve(span);
    if (IsWithinTolerance(span)) {
        for (int k = keys.At(span.left).next; k != span.right; k = keys.At(k).next)
            if (queue.Holds(k)) queue.Set(k, RemovalCost(k));
        return;
    }
    // The curve would leave its samples: the key stays for good, and its neighbours are as they
    // were.
    keys.Relink(key);
    std::size_t saved = 0;
    for (int k = span.left; saved < backup.size(); k = keys.At(k).next)
        keys.At(k) = backup[saved++];
}

KeyReduction::Span KeyReduction::SpanAround(int key) const {
    int left = keys.At(key).previous;
    int end = keys.At(key).next;  // one past the fixed right key
    for (int i = 0; i < kReach; ++i) {
        if (keys.At(left).previous != -1) left = keys.At(left).previous;
        if (end != -1) end = keys.At(end).next;
    }
    return {left, end == -1 ? keys.last : keys.At(end).previous};
}

/// Where two keys part, the equations in front have no unknown in common with those behind: each
/// part is solved by itself, to the bit as all would be together.
void KeyReduction::Solve(const Span& span) {
    int left = span.left;
    for (int a = keys.At(left).next; a != span.right; a = keys.At(a).next) {
        const int b = keys.At(a).next;
        if (b != span.right && !AreParted(a, b)) continue;
        if (silent.IsSolvedByZero(left, b)) {
            silent.SolveByZero(keys, left, b, settings.componentCount);
        } else {
            CountLooks(left, b);
            solver.Solve(left, b);
        }
        left = a;
    }
}

/// The only rows between keys that are apart are those at the first one, where the second has the
/// weight 0.
bool KeyReduction::AreParted(int a, int b) const {
    return keys.AreApart(a, b) && hasFiniteTimes && IsFinite(keys.At(b).positionBefore) &&
           IsFinite(keys.At(b).tangentBefore);
}

/// The samples from key to key are about to be walked through.
void KeyReduction::CountLooks(int a, int b) {
    if (effort != nullptr)
        effort->AddLooks(static_cast<std::uint64_t>(keys.At(b).sample - keys.At(a).sample));
}

bool KeyReduction::IsWithinTolerance(const Span& span) {
    for (int a = span.left; a != span.right; a = keys.At(a).next) {
        const int b = keys.At(a).next;
        if (silent.IsSilentSegment(a, b)) continue;
        CountLooks(a, b);
        if (!IsSegmentWithinTolerance(a, b)) return false;
    }
    return true;
}

bool KeyReduction::IsSegmentWithinTolerance(int a, int b) const {
    const CurveSegment segment = keys.SegmentBetween(a, b);
    const HermiteBasis basis(segment.startTime, segment.endTime);
    const int last = keys.At(b).sample;
    for (int i = keys.At(a).sample; i <= last; ++i) {
        const CurveSample& sample = (*keys.samples)[static_cast<std::size_t>(i)];
        if (sample.soft) continue;
        const Components value = Combine(segment, basis.ValueWeights(sample.time));
        const Components& wanted = i == last ? sample.positionBefore : sample.positionAfter;
        float sum = 0;
        for (std::size_t c = 0; c < static_cast<std::size_t>(settings.componentCount); ++c) {
            const float distance = value[c] - wanted[c];
            sum += distance * distance;
        }
        if (!(sum <= toleranceSquared)) return false;
    }
    return true;
}

}  // namespace Qel::LeastSquares
