#pragma once

#include "LeastSquares/CurveKey.h"
#include "LeastSquares/MinQueue.h"
#include "LeastSquares/SilentSpans.h"
#include "LeastSquares/SpanSolver.h"

#include <AnimUtil/LeastSquares/FitEffort.h>

#include <vector>

namespace Qel::LeastSquares {

/// Removes keys from a curve, cheapest first, as long as the curve stays within the tolerance of
/// its samples.
class KeyReduction {
  public:
    /// `fitEffort` may be null.
    KeyReduction(KeyList& list, const SolverSettings& solverSettings, float curveTolerance,
                 FitEffort* fitEffort = nullptr);

    /// Throws Error where a system cannot be solved, and TooMuchEffort.
    void Run();

  private:
    /// The keys around a removed one: the two fixed ends.
    struct Span {
        int left;
        int right;
    };

    float RemovalCost(int key) const;
    void TryToRemove(int key);
    Span SpanAround(int key) const;
    void Solve(const Span& span);
    bool AreParted(int a, int b) const;
    void CountLooks(int a, int b);
    bool IsWithinTolerance(const Span& span);
    bool IsSegmentWithinTolerance(int a, int b) const;

    KeyList& keys;
    SolverSettings settings;
    float toleranceSquared;
    FitEffort* effort;
    SpanSolver solver;
    SilentSpans silent;
    bool hasFiniteTimes;
    MinQueue queue;  // candidates by the cost of their removal; of equal costs the earlier key
    std::vector<CurveKey> backup;
};

}  // namespace Qel::LeastSquares
