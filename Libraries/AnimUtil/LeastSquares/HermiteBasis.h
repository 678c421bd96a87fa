#pragma once

#include <AnimUtil/LeastSquares/CurveSegment.h>
#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <cstddef>

namespace Qel::LeastSquares {

/// The cubic Hermite basis of one segment, for walks over many of its samples: the reciprocal of
/// its length is taken once.
class HermiteBasis {
  public:
    HermiteBasis(float startTime, float endTime)
        : start(startTime), end(endTime), h(endTime - startTime), inverse(1.0f / h) {}

    /// Both throw "invalid segment time" outside the segment, whose ends are inside.
    HermiteWeights ValueWeights(float time) const {
        const float s = Share(time);
        const float s2 = s * s;
        const float s3 = s2 * s;
        return {1.0f + (2.0f * s3 - 3.0f * s2), (s + (s3 - 2.0f * s2)) * h, 3.0f * s2 - 2.0f * s3,
                (s3 - s2) * h};
    }
    HermiteWeights DerivativeWeights(float time) const {
        const float s = Share(time);
        const float s2 = s * s;
        return {(6.0f * s2 - 6.0f * s) * inverse, 1.0f + (3.0f * s2 - 4.0f * s),
                (6.0f * s - 6.0f * s2) * inverse, 3.0f * s2 - 2.0f * s};
    }

  private:
    float Share(float time) const {
        if (!(time >= start && time <= end)) throw Error("invalid segment time");
        return (time - start) * inverse;
    }

    float start;
    float end;
    float h;
    float inverse;
};

inline Components Combine(const CurveSegment& segment, const HermiteWeights& w) {
    Components result{};
    for (std::size_t c = 0; c < result.size(); ++c)
        result[c] = segment.startPosition[c] * w[0] + segment.startTangent[c] * w[1] +
                    segment.endPosition[c] * w[2] + segment.endTangent[c] * w[3];
    return result;
}

}  // namespace Qel::LeastSquares
