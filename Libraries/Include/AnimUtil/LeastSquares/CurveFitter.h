#pragma once

#include <AnimUtil/LeastSquares/CurveSample.h>
#include <AnimUtil/LeastSquares/CurveSegment.h>
#include <AnimUtil/LeastSquares/FitEffort.h>
#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <vector>

namespace Qel::LeastSquares {

/// Fits a piecewise cubic Hermite curve with as few keys as it can to a series of samples, within a
/// tolerance, in up to four components at once. It starts with a key on every sample, removes keys
/// greedily, cheapest first, re-solves the neighbours of a removed key by weighted linear least
/// squares, and keeps a removal only while every sample concerned stays within the tolerance.
///
/// Call the setters, add the samples in any order, then Solve. A fitter whose Solve threw is not to
/// be used again.
class CurveFitter {
  public:
    /// The largest distance between curve and sample; default 0.001. Below FLT_EPSILON throws.
    void SetTolerance(float value);
    /// Whether the last sample's neighbour is the first when derivatives are taken.
    void SetLooping(bool value) { looping = value; }
    /// How many of the four components count; default 4. Outside 1 to 4 throws.
    void SetComponentCount(int value);
    /// At most this many constraint intervals for each segment; 0 (default) is no limit, below 0
    /// throws.
    void SetMaxSolverComplexity(int value);
    /// Where Solve adds what it costs, and what it must not exceed; null (default) sets no limit.
    void SetEffort(FitEffort* value) { effort = value; }

    /// A sample where value and tangent run through.
    void AddSample(float time, const Components& position);
    /// A sample where the value runs through and the tangent may break.
    void AddCorner(float time, const Components& position);
    /// A sample where the value jumps.
    void AddStep(float time, const Components& before, const Components& after);
    /// Any sample, such as a soft one, which guides the curve and is never tested against the
    /// tolerance.
    void AddSample(const CurveSample& sample) { samples.push_back(sample); }

    /// Replaces `result` by the segments of the curve in order of time. Throws Error for fewer than
    /// two samples, for less than 0.001 between the first and the last, and where the equations
    /// have no solution; TooMuchEffort where there is a limit.
    void Solve(std::vector<CurveSegment>& result);

  private:
    void Prepare();
    void Thin();
    void ForceEnds();
    bool IsFlat() const;
    void MakeDerivatives();

    std::vector<CurveSample> samples;
    float tolerance = 0.001f;
    bool looping = false;
    int componentCount = 4;
    float tangentWeight = 0.001f;
    float softSampleWeight = 0.001f;
    int maxSolverComplexity = 0;
    FitEffort* effort = nullptr;
};

}  // namespace Qel::LeastSquares
