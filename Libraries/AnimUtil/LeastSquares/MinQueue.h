#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Qel::LeastSquares {

/// Entries with numbers from 0 on, each with a cost or out of the queue. The front is the entry of
/// the least cost; of equal costs the lower number; not-a-numbers come last. All storage is taken
/// once.
///
/// It is a tree of minima over the entries. A change goes up only as far as it changes a minimum,
/// which for most is one step, so that its cost does not grow with the number of entries.
class MinQueue {
  public:
    /// Room for the entries 0 to `count` - 1, none of them in the queue.
    explicit MinQueue(std::size_t count);

    /// Puts an entry in or changes its cost, which is not negative.
    void Set(int entry, float cost);
    void Remove(int entry) { Store(entry, kAbsent); }
    bool Holds(int entry) const { return nodes[static_cast<std::size_t>(entry)] != kAbsent; }
    /// The entry that comes first, or -1.
    int GetFront() const;

  private:
    /// Cost in the upper half, number in the lower: the order of these is the order of the queue.
    using Node = std::uint64_t;
    static constexpr Node kAbsent = ~Node{0};
    static constexpr std::size_t kFanOut = 8;  // one cache line

    void Store(int entry, Node node);

    std::vector<Node> nodes;  // the entries, then each level of minima up to the root
    std::vector<std::size_t> levelStarts;
};

}  // namespace Qel::LeastSquares
