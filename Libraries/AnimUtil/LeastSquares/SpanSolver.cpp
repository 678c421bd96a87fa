#include "LeastSquares/SpanSolver.h"

#include "LeastSquares/HermiteBasis.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

namespace Qel::LeastSquares {

namespace {

constexpr std::size_t kMaxVariables = NormalEquations::kMaxVariables;

}  // namespace

SpanSolver::SpanSolver(KeyList& list, const SolverSettings& solverSettings)
    : keys(list),
      settings(solverSettings),
      orthogonalMatrix(kMaxVariables * kMaxVariables),
      upperMatrix(kMaxVariables * kMaxVariables),
      rotatedSide(kMaxVariables),
      solution(kMaxVariables),
      givensRows(2 * kMaxVariables) {}

void SpanSolver::Solve(int left, int right) {
    const int n = NumberVariables(left, right);
    if (n == 0) return;
    equations.Clear(n);
    AddRows(left, right);
    const DenseMatrix upper{n, n, upperMatrix.data()};
    const DenseMatrix orthogonal{n, n, orthogonalMatrix.data()};
    const DenseMatrix rotated{n, 1, rotatedSide.data()};
    FactorByGivens(equations.Matrix(), {2, n, givensRows.data()}, upper, orthogonal);
    for (int component = 0; component < settings.componentCount; ++component) {
        MultiplyTransposed(rotated, orthogonal, equations.RightHandSide(component));
        BackSubstitute({n, 1, solution.data()}, upper, rotated);
        StoreSolution(left, right, component);
    }
}

int SpanSolver::NumberVariables(int left, int right) {
    int count = 0;
    keys.At(left).solved = false;
    keys.At(right).solved = false;
    for (int k = keys.At(left).next; k != right; k = keys.At(k).next) {
        CurveKey& key = keys.At(k);
        const CurveSample& sample = keys.SampleAt(k);
        key.solved = true;
        key.silentSpan = -1;
        key.indices[0] = count++;
        key.indices[1] = count++;
        key.indices[2] = sample.positionContinuous ? key.indices[0] : count++;
        key.indices[3] = sample.tangentContinuous ? key.indices[1] : count++;
    }
    if (count > NormalEquations::kMaxVariables)
        throw Error("out of memory due to unexpected number of variables");
    return count;
}

void SpanSolver::AddRows(int left, int right) {
    for (int a = left; a != right; a = keys.At(a).next) {
        const int b = keys.At(a).next;
        if (!keys.At(a).solved && !keys.At(b).solved) continue;
        SegmentRows rows(equations, keys.At(a), keys.At(b), settings.componentCount);
        AddPositionRows(a, b, rows);
        AddTangentRows(a, b, rows);
    }
    for (int v = 0; v < equations.GetVariableCount(); ++v)
        if (!equations.HasRow(v))
            throw Error("there are not enough samples to solve for this keyframe layout");
    equations.Mirror();
}

/// With a limit on the intervals of a segment, that many are spread over it; without one every
/// sample is taken.
template <class Visit>
void SpanSolver::ForChosenSamples(const SampleRange& range, Visit visit) const {
    const int intervals = range.count - 1;
    const int limit = settings.maxSolverComplexity;
    if (limit > 0 && intervals > limit) {
        for (long long j = 0; j <= limit; ++j)
            visit(range.first + static_cast<int>(j * intervals / limit));
    } else {
        for (int j = 0; j < range.count; ++j) visit(range.first + j);
    }
}

SpanSolver::SampleRange SpanSolver::RangeBetween(int a, int b, bool sharesLast) const {
    const int skippedFirst = keys.At(a).solved ? 0 : 1;
    const int skippedLast = !keys.At(b).solved || sharesLast ? 1 : 0;
    const int first = keys.At(a).sample;
    const int last = keys.At(b).sample;
    return {first + skippedFirst, last - first + 1 - skippedFirst - skippedLast};
}

void SpanSolver::AddPositionRows(int a, int b, SegmentRows& rows) const {
    const int last = keys.At(b).sample;
    const HermiteBasis basis(keys.SampleAt(a).time, keys.SampleAt(b).time);
    ForChosenSamples(RangeBetween(a, b, keys.SampleAt(b).positionContinuous), [&](int index) {
        const CurveSample& sample = (*keys.samples)[static_cast<std::size_t>(index)];
        rows.Add(basis.ValueWeights(sample.time),
                 index == last ? sample.positionBefore : sample.positionAfter,
                 sample.soft ? settings.softSampleWeight : 1.0f);
    });
}

void SpanSolver::AddTangentRows(int a, int b, SegmentRows& rows) const {
    const int first = keys.At(a).sample;
    const int last = keys.At(b).sample;
    const HermiteBasis basis(keys.SampleAt(a).time, keys.SampleAt(b).time);
    ForChosenSamples(RangeBetween(a, b, keys.SampleAt(b).tangentContinuous), [&](int index) {
        const CurveSample& sample = (*keys.samples)[static_cast<std::size_t>(index)];
        Components target;
        if (!sample.tangentContinuous && index == last)
            target = sample.tangentBefore;
        else if (!sample.tangentContinuous && index == first)
            target = sample.tangentAfter;
        else
            for (std::size_t c = 0; c < target.size(); ++c)
                target[c] = (sample.tangentBefore[c] + sample.tangentAfter[c]) / 2.0f;
        rows.Add(basis.DerivativeWeights(sample.time), target,
                 (sample.soft ? settings.softSampleWeight : 1.0f) * settings.tangentWeight);
    });
}

void SpanSolver::StoreSolution(int left, int right, int component) {
    const auto c = static_cast<std::size_t>(component);
    const auto value = [this](int index) {
        return static_cast<float>(solution[static_cast<std::size_t>(index)]);
    };
    for (int k = keys.At(left).next; k != right; k = keys.At(k).next) {
        CurveKey& key = keys.At(k);
        key.positionBefore[c] = value(key.indices[0]);
        key.tangentBefore[c] = value(key.indices[1]);
        key.positionAfter[c] = value(key.indices[2]);
        key.tangentAfter[c] = value(key.indices[3]);
    }
}

}  // namespace Qel::LeastSquares
