#pragma once

#include <cstddef>
#include <vector>

/// No node, or nobody.
inline constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// What becomes of a mover.
struct Move {
    std::size_t lastNode = kNone;     ///< that it left in its last step; kNone: another took it in
    std::vector<std::size_t> movers;  ///< itself and those that it took in, in that order
    bool operator==(const Move&) const = default;
};

/// Movers stand on the nodes of a graph in which each node leads to one other, `next`, or out of
/// it. In a step those on one node become one, for the first takes in the others, and each goes on.
/// Gives what becomes of each mover in `stepCount` steps, one at least.
///
/// The work grows with the nodes and the movers, hardly with the steps: on one way all move at one
/// pace, so that only those who come to it from another way can meet somebody.
std::vector<Move> MoveAlong(const std::vector<std::size_t>& next,
                            const std::vector<std::size_t>& starts, std::size_t stepCount);
