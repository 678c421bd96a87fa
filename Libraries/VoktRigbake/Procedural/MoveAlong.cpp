#include "Procedural/MoveAlong.h"

#include <algorithm>
#include <utility>

namespace {

/// Somebody who comes to a node from another way, and the steps that were made before.
struct Arrival {
    std::size_t time;
    std::size_t mover;
};

struct Node {
    std::size_t waitCount = 0;  // nodes that lead here and were not passed yet
    std::vector<Arrival> arrivals;
    // Who comes along the longest way: the last place is that of time 0, the one before of time 1.
    std::vector<std::size_t> way;
};

/// Somebody who takes a place on a way.
struct Entry {
    std::size_t place;
    std::size_t mover;
};

/// Passes each node once, those that lead to it before it, with all who ever come there.
class Walk {
  public:
    Walk(const std::vector<std::size_t>& nextNodes, const std::vector<std::size_t>& starts,
         std::size_t stepCount)
        : next(nextNodes), lastTime(stepCount - 1), nodes(next.size()), moves(starts.size()) {
        for (const std::size_t node : next)
            if (node != kNone) ++nodes[node].waitCount;
        for (std::size_t mover = 0; mover < starts.size(); ++mover) {
            nodes[starts[mover]].arrivals.push_back({0, mover});
            moves[mover].movers.push_back(mover);
        }
    }

    std::vector<Move> Run() {
        std::vector<std::size_t> ready;
        for (std::size_t node = 0; node < nodes.size(); ++node)
            if (nodes[node].waitCount == 0) ready.push_back(node);
        // In this order nodes with longer ways to them come later, and the last that leads to a
        // node has the longest.
        for (std::size_t i = 0; i < ready.size(); ++i) {
            Pass(ready[i]);
            const std::size_t follower = next[ready[i]];
            if (follower != kNone && nodes[follower].waitCount == 0) ready.push_back(follower);
        }
        // Only circles wait for themselves.
        for (std::size_t node = 0; node < nodes.size(); ++node)
            if (nodes[node].waitCount != 0) PassCircle(node);
        return std::move(moves);
    }

  private:
    void Pass(std::size_t node) {
        std::vector<std::size_t> way = std::exchange(nodes[node].way, {});
        way.push_back(kNone);
        const auto placeOf = [&way](std::size_t time) { return way.size() - 1 - time; };
        std::vector<Entry> entries;
        for (const Arrival& arrival : nodes[node].arrivals)
            entries.push_back({placeOf(arrival.time), arrival.mover});
        Enter(way, std::move(entries));

        if (lastTime < way.size()) Finish(way[placeOf(lastTime)], node);
        const std::size_t movingCount = std::min(lastTime, way.size());
        const std::size_t follower = next[node];
        if (follower == kNone) {
            for (std::size_t time = 0; time < movingCount; ++time) Finish(way[placeOf(time)], node);
        } else if (--nodes[follower].waitCount == 0) {
            nodes[follower].way = std::move(way);
        } else {
            for (std::size_t time = 0; time < movingCount; ++time)
                if (const std::size_t mover = way[placeOf(time)]; mover != kNone)
                    nodes[follower].arrivals.push_back({time + 1, mover});
        }
    }

    /// On a circle a place is that of who stood, or would have stood, on a node at time 0.
    void PassCircle(std::size_t first) {
        std::vector<std::size_t> circle;
        for (std::size_t node = first; nodes[node].waitCount != 0; node = next[node]) {
            nodes[node].waitCount = 0;
            circle.push_back(node);
        }
        std::vector<std::pair<std::size_t, Entry>> timed;
        for (std::size_t i = 0; i < circle.size(); ++i)
            for (const Arrival& arrival : nodes[circle[i]].arrivals)
                timed.push_back(
                    {arrival.time,
                     {(i + circle.size() - arrival.time % circle.size()) % circle.size(),
                      arrival.mover}});
        std::sort(timed.begin(), timed.end(),
                  [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<std::size_t> way(circle.size(), kNone);
        for (auto it = timed.begin(); it != timed.end();) {
            std::vector<Entry> entries;
            for (const std::size_t time = it->first; it != timed.end() && it->first == time; ++it)
                entries.push_back(it->second);
            Enter(way, std::move(entries));
        }
        for (std::size_t i = 0; i < circle.size(); ++i)
            Finish(way[i], circle[(i + lastTime) % circle.size()]);
    }

    /// The first at a place takes in the others, whether they come or are there.
    void Enter(std::vector<std::size_t>& way, std::vector<Entry> entries) {
        const std::size_t comingCount = entries.size();
        for (std::size_t i = 0; i < comingCount; ++i) {
            const std::size_t place = entries[i].place;
            if (way[place] != kNone) entries.push_back({place, std::exchange(way[place], kNone)});
        }
        std::sort(entries.begin(), entries.end(),
                  [](const Entry& a, const Entry& b) { return a.mover < b.mover; });
        for (const Entry& entry : entries) {
            std::size_t& first = way[entry.place];
            if (first == kNone)
                first = entry.mover;
            else
                TakeIn(first, entry.mover);
        }
    }

    void TakeIn(std::size_t mover, std::size_t other) {
        std::vector<std::size_t>& movers = moves[mover].movers;
        const std::vector<std::size_t> others = std::exchange(moves[other].movers, {});
        movers.insert(movers.end(), others.begin(), others.end());
    }

    void Finish(std::size_t mover, std::size_t node) {
        if (mover != kNone) moves[mover].lastNode = node;
    }

    const std::vector<std::size_t>& next;
    const std::size_t lastTime;
    std::vector<Node> nodes;
    std::vector<Move> moves;
};

}  // namespace

std::vector<Move> MoveAlong(const std::vector<std::size_t>& next,
                            const std::vector<std::size_t>& starts, std::size_t stepCount) {
    return Walk(next, starts, stepCount).Run();
}
