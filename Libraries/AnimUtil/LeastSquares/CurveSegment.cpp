#include <AnimUtil/LeastSquares/CurveSegment.h>

#include "LeastSquares/HermiteBasis.h"

namespace Qel::LeastSquares {

HermiteWeights ValueWeights(float startTime, float endTime, float time) {
    return HermiteBasis(startTime, endTime).ValueWeights(time);
}

HermiteWeights DerivativeWeights(float startTime, float endTime, float time) {
    return HermiteBasis(startTime, endTime).DerivativeWeights(time);
}

Components CurveSegment::Evaluate(float time) const {
    return Combine(*this, ValueWeights(startTime, endTime, time));
}

Components CurveSegment::EvaluateDerivative(float time) const {
    return Combine(*this, DerivativeWeights(startTime, endTime, time));
}

}  // namespace Qel::LeastSquares
