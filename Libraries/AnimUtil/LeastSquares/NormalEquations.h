#pragma once

#include "LeastSquares/CurveKey.h"
#include "LeastSquares/DenseMatrix.h"

#include <AnimUtil/LeastSquares/CurveSegment.h>

#include <array>
#include <cstddef>
#include <tuple>
#include <vector>

namespace Qel::LeastSquares {

/// The normal equations of a span: AᵀA of its rows, and Aᵀb for each component. Rows are added up
/// as they come and not kept. The rows of all components have the same coefficients, and so the
/// components have the matrix in common. All storage is taken once.
class NormalEquations {
  public:
    static constexpr int kMaxVariables = 36;
    static constexpr std::size_t kMaxComponents = std::tuple_size_v<Components>;

    NormalEquations();

    /// None but zeros, of `count` variables.
    void Clear(int count);
    /// The lower half becomes that of the upper one.
    void Mirror();

    int GetVariableCount() const { return variableCount; }
    /// False while no row has a coefficient for it.
    bool HasRow(int variable) const { return hasRow[static_cast<std::size_t>(variable)]; }
    DenseMatrix Matrix() { return {variableCount, variableCount, matrix.data()}; }
    /// A column.
    DenseMatrix RightHandSide(int component) {
        return {variableCount, 1, rightHandSides.data() + component * kMaxVariables};
    }

  private:
    friend class SegmentRows;

    int variableCount = 0;
    std::array<bool, kMaxVariables> hasRow{};
    std::vector<double> matrix;
    std::vector<double> rightHandSides;
};

/// Adds the rows of one segment. What its up to four variables have come to stands in here until
/// the segment ends, so that each sum takes its terms one by one in the order of the rows.
class SegmentRows {
  public:
    SegmentRows(NormalEquations& equations, const CurveKey& start, const CurveKey& end,
                int componentCount);
    ~SegmentRows();
    SegmentRows(const SegmentRows&) = delete;
    SegmentRows& operator=(const SegmentRows&) = delete;

    /// `weights` times the ends' values ought to come to `target`. What a fixed end gives is known
    /// and moves to the other side.
    void Add(const HermiteWeights& weights, Components target, float rowWeight);

  private:
    static constexpr std::size_t kColumns = 4;  // those of HermiteWeights

    /// Calls visit(column, variable) for those that are solved.
    template <class Visit>
    void ForVariables(Visit visit) const;
    double& MatrixAt(int a, int b);

    NormalEquations& equations;
    const CurveKey& start;
    const CurveKey& end;
    std::size_t components;
    bool hasRows = false;
    std::array<std::array<double, kColumns>, kColumns> products{};  // the upper half
    std::array<std::array<double, kColumns>, NormalEquations::kMaxComponents> sides{};
};

}  // namespace Qel::LeastSquares
