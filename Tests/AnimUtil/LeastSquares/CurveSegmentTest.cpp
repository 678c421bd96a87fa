#include <AnimUtil/LeastSquares/CurveSegment.h>
#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <gtest/gtest.h>

#include <string>

namespace Qel::LeastSquares {
namespace {

template <class Act>
std::string TextOf(Act act) {
    try {
        act();
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(CurveSegment, EvaluatesTheHermiteBasisWithinItsEnds) {
    const CurveSegment segment{1, 3, {2, 0, 0, 0}, {1, 0, 0, 0}, {6, 0, 0, 0}, {-2, 0, 0, 0}};
    EXPECT_EQ(segment.Evaluate(1)[0], 2);
    EXPECT_EQ(segment.Evaluate(3)[0], 6);
    EXPECT_EQ(segment.Evaluate(2)[0], 4.75f);  // (2 + 6) / 2 + (1 - -2) * 2 / 8
    EXPECT_EQ(segment.EvaluateDerivative(1)[0], 1);
    EXPECT_EQ(segment.EvaluateDerivative(3)[0], -2);
    EXPECT_EQ(TextOf([&] { segment.Evaluate(0.99f); }), "invalid segment time");
    EXPECT_EQ(TextOf([&] { segment.EvaluateDerivative(3.01f); }), "invalid segment time");
}

}  // namespace
}  // namespace Qel::LeastSquares
