#pragma once

#include "LeastSquares/CurveKey.h"
#include "LeastSquares/SpanSolver.h"

#include <array>
#include <cstddef>
#include <vector>

namespace Qel::LeastSquares {

/// Finds where a curve is 0 all along: samples, slopes and the keys at both ends. There the
/// solution is 0 and within the tolerance, whatever the times, and no sample need be looked at.
/// While a channel is held at 0 all costs tie and keys go from left to right, each beside a segment
/// over all that went before: without this the time would grow with the square of the length.
///
/// The sign of a solved 0 is the only thing that rests on the times. It has no say in what follows
/// and is worked out at the end, for the few keys that are left.
class SilentSpans {
  public:
    explicit SilentSpans(const KeyList& list);

    /// Whether the solution strictly between the keys `left` and `right` is 0.
    bool IsSolvedByZero(int left, int right) const;
    /// Gives the keys strictly between them that solution, with signs that are still to come.
    void SolveByZero(KeyList& list, int left, int right, int componentCount);
    /// Whether a segment between neighbours is 0 and so are all its samples.
    bool IsSilentSegment(int a, int b) const;
    /// The signs of all zeros that are still in the curve.
    void Settle(KeyList& list, const SolverSettings& settings) const;

  private:
    /// The samples of a span's keys from end to end, -1 behind the last one.
    static constexpr std::size_t kMostKeys = 10;
    using Span = std::array<int, kMostKeys>;

    bool AreSilentBetween(int left, int right) const;

    const KeyList& keys;
    std::vector<int> soundsBefore;  // how many samples in front of each are not silent
    std::vector<Span> spans;
};

}  // namespace Qel::LeastSquares
