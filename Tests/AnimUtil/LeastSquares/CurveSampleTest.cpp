#include <AnimUtil/LeastSquares/CurveSample.h>
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

TEST(CurveSample, AContinuousSampleHasOneValue) {
    CurveSample sample;
    EXPECT_EQ(TextOf([&] {
                  sample.SetPosition({1, 0, 0, 0}, {2, 0, 0, 0});
              }),
              "cannot set discontinuous position on continuous sample");
    EXPECT_EQ(TextOf([&] {
                  sample.SetTangent({1, 0, 0, 0}, {2, 0, 0, 0});
              }),
              "cannot set discontinuous tangent on continuous sample");
    sample.positionContinuous = false;
    sample.SetPosition({1, 0, 0, 0}, {2, 0, 0, 0});
    EXPECT_EQ(sample.positionAfter[0], 2);
}

}  // namespace
}  // namespace Qel::LeastSquares
