#include <AnimUtil/LeastSquares/CurveSegment.h>

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

namespace Qel::LeastSquares {

namespace {

Components Combine(const CurveSegment& segment, const HermiteWeights& w) {
    Components result{};
    for (std::size_t c = 0; c < result.size(); ++c)
        result[c] = segment.startPosition[c] * w[0] + segment.startTangent[c] * w[1] +
                    segment.endPosition[c] * w[2] + segment.endTangent[c] * w[3];
    return result;
}

void CheckTime(float startTime, float endTime, float time) {
    if (!(time >= startTime && time <= endTime)) throw Error("invalid segment time");
}

}  // namespace

HermiteWeights ValueWeights(float startTime, float endTime, float time) {
    CheckTime(startTime, endTime, time);
    const float h = endTime - startTime;
    const float s = (time - startTime) * (1.0f / h);
    const float s2 = s * s;
    const float s3 = s2 * s;
    return {1.0f + (2.0f * s3 - 3.0f * s2), (s + (s3 - 2.0f * s2)) * h, 3.0f * s2 - 2.0f * s3,
            (s3 - s2) * h};
}

HermiteWeights DerivativeWeights(float startTime, float endTime, float time) {
    CheckTime(startTime, endTime, time);
    const float inverse = 1.0f / (endTime - startTime);
    const float s = (time - startTime) * inverse;
    const float s2 = s * s;
    return {(6.0f * s2 - 6.0f * s) * inverse, 1.0f + (3.0f * s2 - 4.0f * s),
            (6.0f * s - 6.0f * s2) * inverse, 3.0f * s2 - 2.0f * s};
}

Components CurveSegment::Evaluate(float time) const {
    return Combine(*this, ValueWeights(startTime, endTime, time));
}

Components CurveSegment::EvaluateDerivative(float time) const {
    return Combine(*this, DerivativeWeights(startTime, endTime, time));
}

}  // namespace Qel::LeastSquares
