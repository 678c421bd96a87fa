#include "LeastSquares/MinQueue.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace Qel::LeastSquares {

MinQueue::MinQueue(std::size_t count) {
    std::size_t total = 0;
    for (std::size_t width = std::max<std::size_t>(count, 1);;
         width = (width + kFanOut - 1) / kFanOut) {
        levelStarts.push_back(total);
        total += width == 1 ? 1 : (width + kFanOut - 1) / kFanOut * kFanOut;
        if (width == 1) break;
    }
    nodes.assign(total, kAbsent);
}

void MinQueue::Set(int entry, float cost) {
    // Floats that are not negative are in the order of their bits.
    const float ordered = std::isnan(cost) ? std::numeric_limits<float>::quiet_NaN() : cost;
    Store(entry, Node{std::bit_cast<std::uint32_t>(ordered)} << 32 | static_cast<Node>(entry));
}

int MinQueue::GetFront() const {
    const Node front = nodes.back();
    return front == kAbsent ? -1 : static_cast<int>(front & 0xFFFFFFFFu);
}

void MinQueue::Store(int entry, Node node) {
    auto place = static_cast<std::size_t>(entry);
    nodes[place] = node;
    for (std::size_t level = 1; level < levelStarts.size(); ++level) {
        place /= kFanOut;
        const Node* children = nodes.data() + levelStarts[level - 1] + place * kFanOut;
        const Node least = *std::min_element(children, children + kFanOut);
        Node& minimum = nodes[levelStarts[level] + place];
        if (minimum == least) return;
        minimum = least;
    }
}

}  // namespace Qel::LeastSquares
