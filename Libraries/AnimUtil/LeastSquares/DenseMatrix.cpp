#include "LeastSquares/DenseMatrix.h"

#include <AnimUtil/LeastSquares/LeastSquaresError.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Qel::LeastSquares {

namespace {

/// Replaces rows `top` and `bottom` of `m`, from column `first` on, by their rotation with cosine
/// `c` and sine `s`.
void RotateRows(const DenseMatrix& m, const DenseMatrix& temporary, int top, int bottom, int first,
                double c, double s) {
    for (int k = first; k < m.columns; ++k) {
        temporary.At(0, k) = c * m.At(top, k) + s * m.At(bottom, k);
        temporary.At(1, k) = c * m.At(bottom, k) - s * m.At(top, k);
    }
    for (int k = first; k < m.columns; ++k) {
        m.At(top, k) = temporary.At(0, k);
        m.At(bottom, k) = temporary.At(1, k);
    }
}

void RotateColumns(const DenseMatrix& m, int left, int right, double c, double s) {
    for (int k = 0; k < m.rows; ++k) {
        const double a = m.At(k, left);
        const double b = m.At(k, right);
        m.At(k, left) = c * a + s * b;
        m.At(k, right) = c * b - s * a;
    }
}

}  // namespace

void MultiplyTransposed(const DenseMatrix& result, const DenseMatrix& a, const DenseMatrix& b) {
    if (a.rows != b.rows || result.rows != a.columns || result.columns != b.columns)
        throw Error("mismatched matrix sizes in matrix muls");
    for (int i = 0; i < result.rows; ++i) {
        for (int j = 0; j < result.columns; ++j) {
            double sum = 0;
            for (int k = 0; k < a.rows; ++k) sum += a.At(k, i) * b.At(k, j);
            result.At(i, j) = sum;
        }
    }
}

void BackSubstitute(const DenseMatrix& variable, const DenseMatrix& upper,
                    const DenseMatrix& value) {
    if (upper.rows != upper.columns) throw Error("upper-triangular matrix must be square");
    if (variable.columns != 1) throw Error("variable must have a single column");
    if (variable.rows != upper.rows)
        throw Error("variable row count must match upper-triangular matrix");
    if (value.columns != 1) throw Error("value must have a single column");
    if (value.rows != upper.rows) throw Error("value row count must match upper-triangular matrix");
    for (int i = upper.rows - 1; i >= 0; --i) {
        double numerator = value.At(i, 0);
        for (int j = i + 1; j < upper.columns; ++j) numerator -= upper.At(i, j) * variable.At(j, 0);
        double x = numerator / upper.At(i, i);
        if (!std::isfinite(x)) {
            if (!(std::fabs(numerator) < std::numeric_limits<double>::epsilon()))
                throw Error("cannot solve upper-triangular matrix");
            x = 0;
        }
        variable.At(i, 0) = x;
    }
}

void FactorByGivens(const DenseMatrix& source, const DenseMatrix& temporary,
                    const DenseMatrix& upper, const DenseMatrix& orthogonal) {
    const int n = source.rows;
    if (source.columns != n) throw Error("Givens source matrix must be square");
    if (temporary.rows != 2 || temporary.columns != n)
        throw Error("Givens temp matrix dimensions must match source matrix");
    if (upper.rows != n || upper.columns != n)
        throw Error("Givens target upper-triangular matrix dimensions must match source matrix");
    if (orthogonal.rows != n || orthogonal.columns != n)
        throw Error("Givens target orthogonal matrix dimensions must match source matrix");
    std::copy_n(source.elements, n * n, upper.elements);
    std::fill_n(orthogonal.elements, n * n, 0.0);
    for (int i = 0; i < n; ++i) orthogonal.At(i, i) = 1;
    for (int column = 0; column < n; ++column) {
        for (int row = n - 1; row > column; --row) {
            const double a = upper.At(row - 1, column);
            const double b = upper.At(row, column);
            if (b == 0) continue;
            const double length = std::sqrt(a * a + b * b);
            const double c = a / length;
            const double s = b / length;
            // Both rows are zero up to this column.
            RotateRows(upper, temporary, row - 1, row, column, c, s);
            upper.At(row, column) = 0;
            RotateColumns(orthogonal, row - 1, row, c, s);
        }
    }
}

}  // namespace Qel::LeastSquares
