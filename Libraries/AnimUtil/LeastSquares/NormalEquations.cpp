#include "LeastSquares/NormalEquations.h"

#include <algorithm>

namespace Qel::LeastSquares {

NormalEquations::NormalEquations()
    : matrix(kMaxVariables * kMaxVariables), rightHandSides(kMaxComponents * kMaxVariables) {}

void NormalEquations::Clear(int count) {
    variableCount = count;
    hasRow.fill(false);
    std::fill_n(matrix.begin(), count * count, 0.0);
    std::fill(rightHandSides.begin(), rightHandSides.end(), 0.0);
}

void NormalEquations::Mirror() {
    const DenseMatrix full = Matrix();
    for (int i = 0; i < variableCount; ++i)
        for (int j = i + 1; j < variableCount; ++j) full.At(j, i) = full.At(i, j);
}

template <class Visit>
void SegmentRows::ForVariables(Visit visit) const {
    if (start.solved) {
        visit(std::size_t{0}, start.indices[2]);
        visit(std::size_t{1}, start.indices[3]);
    }
    if (end.solved) {
        visit(std::size_t{2}, end.indices[0]);
        visit(std::size_t{3}, end.indices[1]);
    }
}

/// In the upper half; a step's position comes behind its tangent where the tangent goes on.
double& SegmentRows::MatrixAt(int a, int b) {
    return equations.Matrix().At(std::min(a, b), std::max(a, b));
}

SegmentRows::SegmentRows(NormalEquations& sums, const CurveKey& startKey, const CurveKey& endKey,
                         int componentCount)
    : equations(sums),
      start(startKey),
      end(endKey),
      components(static_cast<std::size_t>(componentCount)) {
    ForVariables([&](std::size_t p, int a) {
        ForVariables([&](std::size_t q, int b) {
            if (p <= q) products[p][q] = MatrixAt(a, b);
        });
        for (std::size_t c = 0; c < components; ++c)
            sides[c][p] = equations.RightHandSide(static_cast<int>(c)).At(a, 0);
    });
}

SegmentRows::~SegmentRows() {
    ForVariables([&](std::size_t p, int a) {
        ForVariables([&](std::size_t q, int b) {
            if (p <= q) MatrixAt(a, b) = products[p][q];
        });
        for (std::size_t c = 0; c < components; ++c)
            equations.RightHandSide(static_cast<int>(c)).At(a, 0) = sides[c][p];
        bool& has = equations.hasRow[static_cast<std::size_t>(a)];
        has = has || hasRows;
    });
}

void SegmentRows::Add(const HermiteWeights& weights, Components target, float rowWeight) {
    hasRows = true;
    // Sums of a fixed end's columns are never looked at.
    std::array<double, kColumns> coefficients{};
    for (std::size_t p = 0; p < kColumns; ++p) coefficients[p] = double{weights[p] * rowWeight};
    for (std::size_t p = 0; p < kColumns; ++p)
        for (std::size_t q = p; q < kColumns; ++q)
            products[p][q] += coefficients[p] * coefficients[q];
    for (std::size_t c = 0; c < components; ++c) {
        if (!start.solved) {
            target[c] -= weights[0] * start.positionAfter[c];
            target[c] -= weights[1] * start.tangentAfter[c];
        }
        if (!end.solved) {
            target[c] -= weights[2] * end.positionBefore[c];
            target[c] -= weights[3] * end.tangentBefore[c];
        }
        const double weighted{target[c] * rowWeight};
        for (std::size_t p = 0; p < kColumns; ++p) sides[c][p] += coefficients[p] * weighted;
    }
}

}  // namespace Qel::LeastSquares
