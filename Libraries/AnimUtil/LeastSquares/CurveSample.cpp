#include <AnimUtil/LeastSquares/CurveSample.h>

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

namespace Qel::LeastSquares {

void CurveSample::SetPosition(const Components& before, const Components& after) {
    if (positionContinuous && before != after)
        throw Error("cannot set discontinuous position on continuous sample");
    positionBefore = before;
    positionAfter = after;
}

void CurveSample::SetTangent(const Components& before, const Components& after) {
    if (tangentContinuous && before != after)
        throw Error("cannot set discontinuous tangent on continuous sample");
    tangentBefore = before;
    tangentAfter = after;
}

}  // namespace Qel::LeastSquares
