#pragma once

#include <array>

namespace Qel::LeastSquares {

/// Up to four components of a value or a derivative; those beyond the component count are 0.
using Components = std::array<float, 4>;

/// One sample of the curve to fit.
class CurveSample {
  public:
    float time = 0;  ///< in whatever the tangents are derivatives by
    bool soft = false;
    bool positionContinuous = true;
    bool tangentContinuous = true;
    Components positionBefore{};
    Components tangentBefore{};
    Components positionAfter{};
    Components tangentAfter{};

    /// Two different values throw "cannot set discontinuous position on continuous sample" on a
    /// continuous sample.
    void SetPosition(const Components& before, const Components& after);
    /// The same for tangents: "cannot set discontinuous tangent on continuous sample".
    void SetTangent(const Components& before, const Components& after);
};

}  // namespace Qel::LeastSquares
