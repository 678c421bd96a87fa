#include <AnimUtil/LeastSquares/CurveSegment.h>

#include <AnimUtil/LeastSquares/LeastSquaresError.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/ThrownText.h"

namespace Qel::LeastSquares {
namespace {

TEST(CurveSegment, EvaluatesTheHermiteBasisWithinItsEnds) {
    const CurveSegment segment{1, 3, {2, 0, 0, 0}, {1, 0, 0, 0}, {6, 0, 0, 0}, {-2, 0, 0, 0}};
    EXPECT_EQ(segment.Evaluate(1)[0], 2);
    EXPECT_EQ(segment.Evaluate(3)[0], 6);
    EXPECT_EQ(segment.Evaluate(2)[0], 4.75f);  // (2 + 6) / 2 + (1 - -2) * 2 / 8
    EXPECT_EQ(segment.EvaluateDerivative(1)[0], 1);
    EXPECT_EQ(segment.EvaluateDerivative(3)[0], -2);
    EXPECT_EQ(ThrownText<Error>([&] { segment.Evaluate(0.99f); }), "invalid segment time");
    EXPECT_EQ(ThrownText<Error>([&] { segment.EvaluateDerivative(3.01f); }),
              "invalid segment time");
}

TEST(CurveSegment, EveryComponentIsEvaluated) {
    const CurveSegment segment{0, 1, {1, 2, 3, 4}, {}, {3, 6, 9, 12}, {}};
    EXPECT_EQ(segment.Evaluate(0.5f), (Components{2, 4, 6, 8}));
    EXPECT_EQ(segment.EvaluateDerivative(0.5f), (Components{3, 6, 9, 12}));
}

TEST(CurveSegment, TheReciprocalOfTheLengthIsTakenFirst) {
    // 0.7 and 0.3 are such that dividing would give another bit.
    const float h = 3;
    for (int i = 1; i < 300; ++i) {
        const float time = static_cast<float>(i) / 100;
        const float s = time * (1.0f / h);
        const float s2 = s * s, s3 = s2 * s;
        EXPECT_EQ(ValueWeights(0, h, time)[2], 3 * s2 - 2 * s3);
        EXPECT_EQ(ValueWeights(0, h, time)[3], (s3 - s2) * h);
        EXPECT_EQ(DerivativeWeights(0, h, time)[3], 3 * s2 - 2 * s);
    }
}

TEST(CurveSegment, TheWeightsOfAConstantAreOneTogether) {
    for (int i = 0; i <= 64; ++i) {
        const float time = 2 + static_cast<float>(i) / 16;
        const HermiteWeights value = ValueWeights(2, 6, time);
        EXPECT_NEAR(value[0] + value[2], 1, 1e-6);
        const HermiteWeights derivative = DerivativeWeights(2, 6, time);
        EXPECT_NEAR(derivative[0] + derivative[2], 0, 1e-6);
    }
}

TEST(CurveSegment, TimesThatAreNoNumbersAreOutside) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(ThrownText<Error>([&] { ValueWeights(0, 1, nan); }), "invalid segment time");
    EXPECT_EQ(ThrownText<Error>([&] { ValueWeights(nan, 1, 0.5f); }), "invalid segment time");
    EXPECT_EQ(ThrownText<Error>([&] { DerivativeWeights(0, nan, 0.5f); }), "invalid segment time");
    EXPECT_EQ(ThrownText<Error>([&] { DerivativeWeights(0, 1, std::nextafter(1.0f, 2.0f)); }),
              "invalid segment time");
    EXPECT_EQ(ThrownText<Error>([&] { ValueWeights(0, 1, -1e-30f); }), "invalid segment time");
}

}  // namespace
}  // namespace Qel::LeastSquares
