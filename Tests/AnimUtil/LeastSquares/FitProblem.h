#pragma once

#include <AnimUtil/LeastSquares/CurveFitter.h>

#include <vector>

namespace Qel::LeastSquares {

/// What a fitter is given.
struct FitProblem {
    std::vector<CurveSample> samples;
    float tolerance = 0.001f;
    int components = 1;
    bool looping = false;
    int maxSolverComplexity = 0;
};

/// Throws what the fitter throws.
inline std::vector<CurveSegment> Fit(const FitProblem& problem) {
    CurveFitter fitter;
    fitter.SetTolerance(problem.tolerance);
    fitter.SetComponentCount(problem.components);
    fitter.SetLooping(problem.looping);
    fitter.SetMaxSolverComplexity(problem.maxSolverComplexity);
    for (const CurveSample& sample : problem.samples) fitter.AddSample(sample);
    std::vector<CurveSegment> segments;
    fitter.Solve(segments);
    return segments;
}

}  // namespace Qel::LeastSquares
