#include <AnimUtil/LeastSquares/CurveSample.h>

#include <AnimUtil/LeastSquares/LeastSquaresError.h>
#include <gtest/gtest.h>

#include <limits>

#include "Support/ThrownText.h"

namespace Qel::LeastSquares {
namespace {

TEST(CurveSample, AContinuousSampleHasOneValue) {
    CurveSample sample;
    EXPECT_EQ(ThrownText<Error>([&] {
                  sample.SetPosition({1, 0, 0, 0}, {2, 0, 0, 0});
              }),
              "cannot set discontinuous position on continuous sample");
    EXPECT_EQ(ThrownText<Error>([&] {
                  sample.SetTangent({1, 0, 0, 0}, {2, 0, 0, 0});
              }),
              "cannot set discontinuous tangent on continuous sample");
    sample.positionContinuous = false;
    sample.SetPosition({1, 0, 0, 0}, {2, 0, 0, 0});
    EXPECT_EQ(sample.positionAfter[0], 2);
}

TEST(CurveSample, ADiscontinuousSampleHasTwoSides) {
    CurveSample sample;
    sample.positionContinuous = false;
    sample.tangentContinuous = false;
    sample.SetPosition({1}, {2});
    sample.SetTangent({3}, {4});
    EXPECT_EQ(sample.positionBefore[0], 1);
    EXPECT_EQ(sample.positionAfter[0], 2);
    EXPECT_EQ(sample.tangentBefore[0], 3);
    EXPECT_EQ(sample.tangentAfter[0], 4);
}

TEST(CurveSample, EachFlagGuardsItsOwnValue) {
    CurveSample corner;
    corner.tangentContinuous = false;
    EXPECT_EQ(ThrownText<Error>([&] {
                  corner.SetPosition({0, 0, 0, 1}, {});
              }),
              "cannot set discontinuous position on continuous sample");
    corner.SetTangent({0, 0, 0, 1}, {});
    EXPECT_EQ(corner.tangentBefore[3], 1);
    CurveSample jump;
    jump.positionContinuous = false;
    EXPECT_EQ(ThrownText<Error>([&] {
                  jump.SetTangent({0, 0, 0, 1}, {});
              }),
              "cannot set discontinuous tangent on continuous sample");
}

TEST(CurveSample, WhatIsNoNumberIsNeverTheSameTwice) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(ThrownText<Error>([&] { CurveSample().SetPosition({nan}, {nan}); }),
              "cannot set discontinuous position on continuous sample");
}

}  // namespace
}  // namespace Qel::LeastSquares
