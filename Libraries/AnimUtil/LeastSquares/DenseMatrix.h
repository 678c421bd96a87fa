#pragma once

namespace Qel::LeastSquares {

/// A dense row-major matrix of doubles over memory that the caller provides. A vector is a matrix
/// of one column.
struct DenseMatrix {
    int rows = 0;
    int columns = 0;
    double* elements = nullptr;

    double& At(int row, int column) const { return elements[row * columns + column]; }
};

/// `result` = transpose of `a` times `b`. Sizes that do not fit throw Error.
void MultiplyTransposed(const DenseMatrix& result, const DenseMatrix& a, const DenseMatrix& b);

/// Solves `upper` x = `value` from the last row up. A pivot that makes x not finite is let pass,
/// with x = 0, where the row's right-hand side is below the double epsilon: nothing is asked of
/// that variable. Otherwise it throws Error.
void BackSubstitute(const DenseMatrix& variable, const DenseMatrix& upper,
                    const DenseMatrix& value);

/// Factors `source` into `orthogonal` and `upper` by Givens rotations: source = orthogonal x upper.
/// `temporary` has two rows and the columns of `source`.
void FactorByGivens(const DenseMatrix& source, const DenseMatrix& temporary,
                    const DenseMatrix& upper, const DenseMatrix& orthogonal);

}  // namespace Qel::LeastSquares
