#pragma once

#include "LeastSquares/CurveKey.h"
#include "LeastSquares/NormalEquations.h"

#include <vector>

namespace Qel::LeastSquares {

/// What a span is solved with.
struct SolverSettings {
    int componentCount = 4;
    float tangentWeight = 0.001f;
    float softSampleWeight = 0.001f;
    int maxSolverComplexity = 0;
};

/// Solves the keys strictly between two fixed keys for the curve that comes nearest to the samples
/// of the span: a weighted linear least squares system for each component, by its normal equations.
/// All storage is taken once.
class SpanSolver {
  public:
    SpanSolver(KeyList& list, const SolverSettings& solverSettings);

    /// Writes the solution into the keys between `left` and `right`, which stay as they are. Throws
    /// Error where the system cannot be solved.
    void Solve(int left, int right);

  private:
    /// The samples of one segment that give rows of one kind.
    struct SampleRange {
        int first = 0;
        int count = 0;  // of samples
    };

    int NumberVariables(int left, int right);
    void AddRows(int left, int right);
    /// The samples from key to key, without those of fixed keys, and without the last one where the
    /// next segment shares it: a sample counts once.
    SampleRange RangeBetween(int a, int b, bool sharesLast) const;
    void AddPositionRows(int a, int b, SegmentRows& rows) const;
    void AddTangentRows(int a, int b, SegmentRows& rows) const;
    template <class Visit>
    void ForChosenSamples(const SampleRange& range, Visit visit) const;
    void StoreSolution(int left, int right, int component);

    KeyList& keys;
    SolverSettings settings;
    NormalEquations equations;
    std::vector<double> orthogonalMatrix;
    std::vector<double> upperMatrix;
    std::vector<double> rotatedSide;
    std::vector<double> solution;
    std::vector<double> givensRows;
};

}  // namespace Qel::LeastSquares
