#include "LeastSquares/NormalEquations.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>

namespace Qel::LeastSquares {
namespace {

CurveKey Solved(std::array<int, 4> indices) {
    CurveKey key;
    key.solved = true;
    key.indices = indices;
    return key;
}

CurveKey Fixed(float value, float slope) {
    CurveKey key;
    key.positionBefore = key.positionAfter = {value};
    key.tangentBefore = key.tangentAfter = {slope};
    return key;
}

TEST(NormalEquations, ARowAddsItsProductsAndItsTarget) {
    NormalEquations equations;
    equations.Clear(4);
    const CurveKey start = Solved({0, 1, 0, 1}), end = Solved({2, 3, 2, 3});
    SegmentRows(equations, start, end, 2).Add({1, 2, 3, 4}, {5, 6, 7, 8}, 2);
    equations.Mirror();
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j)
            EXPECT_EQ(equations.Matrix().At(i, j), 4 * (i + 1) * (j + 1)) << i << ' ' << j;
        EXPECT_EQ(equations.RightHandSide(0).At(i, 0), 4 * 5 * (i + 1));
        EXPECT_EQ(equations.RightHandSide(1).At(i, 0), 4 * 6 * (i + 1));
        EXPECT_EQ(equations.RightHandSide(2).At(i, 0), 0);
        EXPECT_TRUE(equations.HasRow(i));
    }
}

TEST(NormalEquations, AFixedEndMovesToTheOtherSide) {
    NormalEquations equations;
    equations.Clear(2);
    const CurveKey free = Solved({0, 1, 0, 1}), fixed = Fixed(10, 100);
    SegmentRows(equations, fixed, free, 1).Add({1, 2, 3, 4}, {1000}, 1);
    EXPECT_EQ(equations.RightHandSide(0).At(0, 0), 3 * (1000 - 1 * 10 - 2 * 100));
    EXPECT_EQ(equations.RightHandSide(0).At(1, 0), 4 * (1000 - 1 * 10 - 2 * 100));
    equations.Clear(2);
    SegmentRows(equations, free, fixed, 1).Add({1, 2, 3, 4}, {1000}, 1);
    EXPECT_EQ(equations.RightHandSide(0).At(0, 0), 1 * (1000 - 3 * 10 - 4 * 100));
    EXPECT_EQ(equations.RightHandSide(0).At(1, 0), 2 * (1000 - 3 * 10 - 4 * 100));
    EXPECT_EQ(equations.Matrix().At(0, 1), 2);
}

TEST(NormalEquations, TheSidesOfAStepAreVariablesOfTheirOwn) {
    NormalEquations equations;
    equations.Clear(3);
    // The position behind the step comes after the tangent that both sides share.
    const CurveKey step = Solved({0, 1, 2, 1}), fixed = Fixed(0, 0);
    SegmentRows(equations, fixed, step, 1).Add({0, 0, 3, 4}, {1}, 1);
    EXPECT_TRUE(equations.HasRow(0) && equations.HasRow(1));
    EXPECT_FALSE(equations.HasRow(2));
    SegmentRows(equations, step, fixed, 1).Add({5, 6, 0, 0}, {1}, 1);
    EXPECT_TRUE(equations.HasRow(2));
    equations.Mirror();
    const double expected[3][3] = {{9, 12, 0}, {12, 16 + 36, 30}, {0, 30, 25}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) EXPECT_EQ(equations.Matrix().At(i, j), expected[i][j]);
}

TEST(NormalEquations, ASegmentWithoutRowsLeavesAllAsItWas) {
    NormalEquations equations;
    equations.Clear(2);
    const CurveKey fixed = Fixed(1, 1), free = Solved({0, 1, 0, 1});
    { const SegmentRows none(equations, fixed, free, 4); }
    EXPECT_FALSE(equations.HasRow(0) || equations.HasRow(1));
    EXPECT_EQ(equations.Matrix().At(0, 0), 0);
}

/// Sums of floats' products in double hold rounding: only this order of terms gives these bits.
TEST(NormalEquations, SumsTakeTheirTermsInTheOrderOfTheRows) {
    std::mt19937 random(7);
    const auto draw = [&] { return static_cast<float>(random() % 20001) / 7000 - 1; };
    NormalEquations equations;
    equations.Clear(6);
    const std::array<CurveKey, 3> keys = {Solved({0, 1, 0, 1}), Solved({2, 3, 2, 3}),
                                          Solved({4, 5, 4, 5})};
    double products[6][6] = {};
    double sides[6] = {};
    for (std::size_t segment = 0; segment < 2; ++segment) {
        SegmentRows rows(equations, keys[segment], keys[segment + 1], 1);
        for (int row = 0; row < 500; ++row) {
            const HermiteWeights weights = {draw(), draw(), draw(), draw()};
            const float target = draw(), weight = draw();
            rows.Add(weights, {target}, weight);
            for (std::size_t p = 0; p < 4; ++p) {
                const double a{weights[p] * weight};
                for (std::size_t q = 0; q < 4; ++q)
                    products[2 * segment + p][2 * segment + q] += a * double{weights[q] * weight};
                sides[2 * segment + p] += a * double{target * weight};
            }
        }
    }
    equations.Mirror();
    for (int i = 0; i < 6; ++i) {
        for (int j = 0; j < 6; ++j) EXPECT_EQ(equations.Matrix().At(i, j), products[i][j]);
        EXPECT_EQ(equations.RightHandSide(0).At(i, 0), sides[i]);
    }
}

TEST(NormalEquations, AreEmptyAgainWhenCleared) {
    NormalEquations equations;
    equations.Clear(4);
    const CurveKey start = Solved({0, 1, 0, 1}), end = Solved({2, 3, 2, 3});
    SegmentRows(equations, start, end, 4).Add({1, 2, 3, 4}, {5, 6, 7, 8}, 2);
    equations.Clear(3);
    EXPECT_EQ(equations.GetVariableCount(), 3);
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) EXPECT_EQ(equations.Matrix().At(i, j), 0);
        for (int c = 0; c < 4; ++c) EXPECT_EQ(equations.RightHandSide(c).At(i, 0), 0);
        EXPECT_FALSE(equations.HasRow(i));
    }
}

}  // namespace
}  // namespace Qel::LeastSquares
