#pragma once

#include "LeastSquares/CurveKey.h"
#include "LeastSquares/SpanSolver.h"

#include <set>
#include <vector>

namespace Qel::LeastSquares {

/// Removes keys from a curve, cheapest first, as long as the curve stays within the tolerance of
/// its samples.
class KeyReduction {
  public:
    KeyReduction(KeyList& list, const SolverSettings& solverSettings, float curveTolerance);

    void Run();

  private:
    /// Candidates by cost; of equal cost the key whose sample stands earlier; a cost that is no
    /// number comes last.
    struct Candidate {
        float cost;
        int sample;
        int key;
        bool operator<(const Candidate& other) const;
    };
    /// The keys around a removed one: the two fixed ends.
    struct Span {
        int left;
        int right;
    };

    float RemovalCost(int key) const;
    void Enqueue(int key);
    void Dequeue(int key);
    void TryToRemove(int key);
    Span SpanAround(int key) const;
    bool IsWithinTolerance(const Span& span) const;
    bool IsSegmentWithinTolerance(int a, int b) const;

    KeyList& keys;
    SolverSettings settings;
    float toleranceSquared;
    SpanSolver solver;
    std::set<Candidate> queue;
    std::vector<CurveKey> backup;
};

}  // namespace Qel::LeastSquares
