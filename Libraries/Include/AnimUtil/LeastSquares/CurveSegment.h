#pragma once

#include <AnimUtil/LeastSquares/CurveSample.h>

#include <array>

namespace Qel::LeastSquares {

/// One cubic Hermite segment of a fitted curve. Tangents are derivatives with respect to time.
struct CurveSegment {
    float startTime = 0;
    float endTime = 0;
    Components startPosition{};
    Components startTangent{};
    Components endPosition{};
    Components endTangent{};

    /// Value and derivative at `time`; throw "invalid segment time" outside startTime to endTime,
    /// the ends included.
    Components Evaluate(float time) const;
    Components EvaluateDerivative(float time) const;
};

/// The weights of start value, start tangent, end value and end tangent (the Hermite basis).
using HermiteWeights = std::array<float, 4>;
HermiteWeights ValueWeights(float startTime, float endTime, float time);
HermiteWeights DerivativeWeights(float startTime, float endTime, float time);

}  // namespace Qel::LeastSquares
