#include "LeastSquares/DenseMatrix.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "Support/ThrownText.h"

namespace Qel::LeastSquares {
namespace {

struct Owned {
    Owned(int rows, int columns)
        : values(static_cast<std::size_t>(rows * columns)), matrix{rows, columns, values.data()} {}
    std::vector<double> values;
    DenseMatrix matrix;
};

TEST(DenseMatrix, GivensRotationsFactorIntoAnOrthogonalAndAnUpperTriangularMatrix) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> value(-2, 2);
    const int n = 9;
    Owned source(n, n), temporary(2, n), upper(n, n), orthogonal(n, n), product(n, n);
    for (double& v : source.values) v = value(random);
    FactorByGivens(source.matrix, temporary.matrix, upper.matrix, orthogonal.matrix);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < i; ++j) EXPECT_EQ(upper.matrix.At(i, j), 0);
    MultiplyTransposed(product.matrix, orthogonal.matrix, orthogonal.matrix);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) EXPECT_NEAR(product.matrix.At(i, j), i == j ? 1 : 0, 1e-14);
    MultiplyTransposed(product.matrix, orthogonal.matrix, source.matrix);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            EXPECT_NEAR(product.matrix.At(i, j), upper.matrix.At(i, j), 1e-13);
}

TEST(DenseMatrix, BackSubstitutionSolvesFromTheLastRowUp) {
    Owned upper(2, 2), x(2, 1), b(2, 1);
    upper.values = {2, 4, 0, 5};
    b.values = {16, 15};
    BackSubstitute(x.matrix, upper.matrix, b.matrix);
    EXPECT_EQ(x.values, (std::vector<double>{2, 3}));
}

TEST(DenseMatrix, AZeroPivotPassesOnAZeroRowOnly) {
    Owned upper(2, 2), x(2, 1), b(2, 1);
    upper.values = {1, 1, 0, 0};
    b.values = {4, 0};
    BackSubstitute(x.matrix, upper.matrix, b.matrix);
    EXPECT_EQ(x.values, (std::vector<double>{4, 0}));
    // What rounding may leave of a zero passes, too.
    b.values = {4, 2e-16};
    BackSubstitute(x.matrix, upper.matrix, b.matrix);
    EXPECT_EQ(x.values, (std::vector<double>{4, 0}));
    for (const double more : {1.0, 2.5e-16, -2.5e-16}) {
        b.values = {4, more};
        EXPECT_EQ(ThrownText<Error>([&] { BackSubstitute(x.matrix, upper.matrix, b.matrix); }),
                  "cannot solve upper-triangular matrix")
            << more;
    }
}

TEST(DenseMatrix, SizesThatDoNotFitAreRefused) {
    Owned m22(2, 2), m23(2, 3), m21(2, 1), m31(3, 1), m33(3, 3), m22b(2, 2), m22c(2, 2);
    EXPECT_EQ(ThrownText<Error>([&] { MultiplyTransposed(m22.matrix, m31.matrix, m21.matrix); }),
              "mismatched matrix sizes in matrix muls");
    EXPECT_EQ(ThrownText<Error>([&] { BackSubstitute(m21.matrix, m23.matrix, m21.matrix); }),
              "upper-triangular matrix must be square");
    EXPECT_EQ(ThrownText<Error>([&] { BackSubstitute(m22.matrix, m22b.matrix, m21.matrix); }),
              "variable must have a single column");
    EXPECT_EQ(ThrownText<Error>([&] { BackSubstitute(m31.matrix, m22.matrix, m21.matrix); }),
              "variable row count must match upper-triangular matrix");
    EXPECT_EQ(ThrownText<Error>([&] { BackSubstitute(m21.matrix, m22.matrix, m22b.matrix); }),
              "value must have a single column");
    EXPECT_EQ(ThrownText<Error>([&] { BackSubstitute(m21.matrix, m22.matrix, m31.matrix); }),
              "value row count must match upper-triangular matrix");
    EXPECT_EQ(ThrownText<Error>(
                  [&] { FactorByGivens(m23.matrix, m22.matrix, m22b.matrix, m22c.matrix); }),
              "Givens source matrix must be square");
    EXPECT_EQ(ThrownText<Error>(
                  [&] { FactorByGivens(m22.matrix, m23.matrix, m22b.matrix, m22c.matrix); }),
              "Givens temp matrix dimensions must match source matrix");
    EXPECT_EQ(ThrownText<Error>(
                  [&] { FactorByGivens(m22.matrix, m22b.matrix, m33.matrix, m22c.matrix); }),
              "Givens target upper-triangular matrix dimensions must match source matrix");
    EXPECT_EQ(ThrownText<Error>(
                  [&] { FactorByGivens(m22.matrix, m22b.matrix, m22c.matrix, m33.matrix); }),
              "Givens target orthogonal matrix dimensions must match source matrix");
}

}  // namespace
}  // namespace Qel::LeastSquares
