#include "LeastSquares/SpanSolver.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <algorithm>
#include <new>

namespace Qel::LeastSquares {

namespace {

/// Enough for the rows of any span: each sample stands in up to five rows, and a local solve sees
/// few of them twice.
std::size_t EntryCount(std::size_t samples, int maxSolverComplexity) {
    const std::size_t all = 8 * samples + 108;
    if (maxSolverComplexity <= 0) return all;
    return std::min(all, 72 * static_cast<std::size_t>(maxSolverComplexity) + 108);
}

}  // namespace

SpanSolver::SpanSolver(KeyList& list, const SolverSettings& solverSettings)
    : keys(list),
      settings(solverSettings),
      entryPool(sizeof(Entry),
                EntryCount(list.samples->size(), solverSettings.maxSolverComplexity)),
      rightHandSide(kMaxVariables),
      normalMatrix(kMaxVariables * kMaxVariables),
      orthogonalMatrix(kMaxVariables * kMaxVariables),
      upperMatrix(kMaxVariables * kMaxVariables),
      rotatedSide(kMaxVariables),
      solution(kMaxVariables),
      givensRows(2 * kMaxVariables) {}

void SpanSolver::Solve(int left, int right) {
    NumberVariables(left, right);
    if (variableCount == 0) return;
    for (int component = 0; component < settings.componentCount; ++component) {
        BuildRows(left, right, component);
        FormNormalMatrix();
        SolveNormalEquations();
        StoreSolution(left, right, component);
        FreeEntries();
    }
}

void SpanSolver::NumberVariables(int left, int right) {
    variableCount = 0;
    keys.At(left).solved = false;
    keys.At(right).solved = false;
    for (int k = keys.At(left).next; k != right; k = keys.At(k).next) {
        CurveKey& key = keys.At(k);
        const CurveSample& sample = keys.SampleAt(k);
        key.solved = true;
        key.silentSpan = -1;
        key.indices[0] = variableCount++;
        key.indices[1] = variableCount++;
        key.indices[2] = sample.positionContinuous ? key.indices[0] : variableCount++;
        key.indices[3] = sample.tangentContinuous ? key.indices[1] : variableCount++;
    }
    if (variableCount > kMaxVariables)
        throw Error("out of memory due to unexpected number of variables");
}

void SpanSolver::BuildRows(int left, int right, int component) {
    nextRow = 0;
    std::fill(rightHandSide.begin(), rightHandSide.end(), 0.0);
    for (int a = left; a != right; a = keys.At(a).next) {
        const int b = keys.At(a).next;
        if (!keys.At(a).solved && !keys.At(b).solved) continue;
        AddPositionRows(a, b, component);
        AddTangentRows(a, b, component);
    }
    for (int v = 0; v < variableCount; ++v)
        if (variables[static_cast<std::size_t>(v)].first == nullptr)
            throw Error("there are not enough samples to solve for this keyframe layout");
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

void SpanSolver::AddPositionRows(int a, int b, int component) {
    const int last = keys.At(b).sample;
    const auto c = static_cast<std::size_t>(component);
    ForChosenSamples(RangeBetween(a, b, keys.SampleAt(b).positionContinuous), [&](int index) {
        const CurveSample& sample = (*keys.samples)[static_cast<std::size_t>(index)];
        const float target = index == last ? sample.positionBefore[c] : sample.positionAfter[c];
        const float rowWeight = sample.soft ? settings.softSampleWeight : 1.0f;
        AddRow(a, b, ValueWeights(keys.SampleAt(a).time, keys.SampleAt(b).time, sample.time),
               target, rowWeight, component);
    });
}

void SpanSolver::AddTangentRows(int a, int b, int component) {
    const int first = keys.At(a).sample;
    const int last = keys.At(b).sample;
    const auto c = static_cast<std::size_t>(component);
    ForChosenSamples(RangeBetween(a, b, keys.SampleAt(b).tangentContinuous), [&](int index) {
        const CurveSample& sample = (*keys.samples)[static_cast<std::size_t>(index)];
        float target = (sample.tangentBefore[c] + sample.tangentAfter[c]) / 2.0f;
        if (!sample.tangentContinuous && index == last)
            target = sample.tangentBefore[c];
        else if (!sample.tangentContinuous && index == first)
            target = sample.tangentAfter[c];
        const float rowWeight =
            (sample.soft ? settings.softSampleWeight : 1.0f) * settings.tangentWeight;
        AddRow(a, b, DerivativeWeights(keys.SampleAt(a).time, keys.SampleAt(b).time, sample.time),
               target, rowWeight, component);
    });
}

void SpanSolver::AddRow(int a, int b, const HermiteWeights& weights, float target, float rowWeight,
                        int component) {
    const auto c = static_cast<std::size_t>(component);
    const CurveKey& start = keys.At(a);
    const CurveKey& end = keys.At(b);
    // What a fixed key gives is known and moves to the other side.
    if (!start.solved) {
        target -= weights[0] * start.positionAfter[c];
        target -= weights[1] * start.tangentAfter[c];
    }
    if (!end.solved) {
        target -= weights[2] * end.positionBefore[c];
        target -= weights[3] * end.tangentBefore[c];
    }
    target *= rowWeight;
    if (start.solved) {
        AddEntry(start.indices[2], weights[0] * rowWeight, target);
        AddEntry(start.indices[3], weights[1] * rowWeight, target);
    }
    if (end.solved) {
        AddEntry(end.indices[0], weights[2] * rowWeight, target);
        AddEntry(end.indices[1], weights[3] * rowWeight, target);
    }
    ++nextRow;
}

void SpanSolver::AddEntry(int variable, float coefficient, float target) {
    auto* entry = new (entryPool.Allocate()) Entry{nextRow, coefficient, nullptr};
    Variable& list = variables[static_cast<std::size_t>(variable)];
    (list.last != nullptr ? list.last->next : list.first) = entry;
    list.last = entry;
    rightHandSide[static_cast<std::size_t>(variable)] += double{coefficient} * double{target};
}

void SpanSolver::FormNormalMatrix() {
    const DenseMatrix normal{variableCount, variableCount, normalMatrix.data()};
    for (int i = 0; i < variableCount; ++i) {
        for (int j = i; j < variableCount; ++j) {
            const Entry* a = variables[static_cast<std::size_t>(i)].first;
            const Entry* b = variables[static_cast<std::size_t>(j)].first;
            double sum = 0;
            // Keys that are no neighbours have no row in common.
            if (variables[static_cast<std::size_t>(i)].last->row < b->row) a = nullptr;
            while (a != nullptr && b != nullptr) {
                if (a->row == b->row) sum += double{a->coefficient} * double{b->coefficient};
                const int row = std::min(a->row, b->row);
                if (a->row == row) a = a->next;
                if (b->row == row) b = b->next;
            }
            normal.At(i, j) = sum;
            normal.At(j, i) = sum;
        }
    }
}

void SpanSolver::SolveNormalEquations() {
    const int n = variableCount;
    const DenseMatrix upper{n, n, upperMatrix.data()};
    const DenseMatrix orthogonal{n, n, orthogonalMatrix.data()};
    const DenseMatrix rotated{n, 1, rotatedSide.data()};
    FactorByGivens({n, n, normalMatrix.data()}, {2, n, givensRows.data()}, upper, orthogonal);
    MultiplyTransposed(rotated, orthogonal, {n, 1, rightHandSide.data()});
    BackSubstitute({n, 1, solution.data()}, upper, rotated);
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

void SpanSolver::FreeEntries() {
    if (entryPool.GetOverflowCount() != 0) {
        for (int v = 0; v < variableCount; ++v) {
            for (Entry* entry = variables[static_cast<std::size_t>(v)].first; entry != nullptr;) {
                Entry* next = entry->next;
                entryPool.Free(entry);
                entry = next;
            }
        }
    }
    variables.fill({});
    entryPool.Wipe();
}

}  // namespace Qel::LeastSquares
