#pragma once

#include <VokLib/Tree/VokObj.h>

#include <cstddef>
#include <deque>
#include <vector>

/// Walks a tree, the root included, depth-first (in pre-order) or breadth-first; with a type filter
/// it presents only objects of exactly that type, and the walk goes on beneath the others. Each
/// step costs constant time.
class VokItHierarchy {
  public:
    enum class Kind { DepthFirst = 0, BreadthFirst = 1 };

    explicit VokItHierarchy(VokObj* root, Kind kind = Kind::DepthFirst, VokTypeId filter = 0);
    void Reset(VokObj* root, Kind kind = Kind::DepthFirst, VokTypeId filter = 0);

    /// The new current object, or null at the end.
    VokObj* Next();
    VokObj* Current() const;
    bool AtEnd() const { return Current() == nullptr; }
    /// The next step does not descend into the current object.
    void SkipChildren() { skipChildren = true; }
    /// Depth-first: how many objects stand above the current one on the way from the root.
    std::size_t GetDepth() const { return stack.empty() ? 0 : stack.size() - 1; }
    /// Breadth-first: the level of the current object, the root's being 0.
    int GetLevel() const { return level; }

  private:
    struct Place {
        VokObj* object;
        std::size_t index;  // among its parent's children
    };
    VokObj* Step();
    VokObj* StepDepthFirst();
    VokObj* StepBreadthFirst();

    Kind kind = Kind::DepthFirst;
    VokTypeId filter = 0;
    bool skipChildren = false;
    std::vector<Place> stack;
    std::deque<VokObj*> queue;
    std::size_t leftInLevel = 0;
    std::size_t inNextLevel = 0;
    int level = 0;
};

/// Calls `visit` with each object of exactly type `T` under `root` (the root included), in
/// pre-order.
template <class T, class Visit>
void ForEach(VokObj* root, Visit visit) {
    for (VokItHierarchy it(root, VokItHierarchy::Kind::DepthFirst, T::TypeId()); !it.AtEnd();
         it.Next())
        visit(*static_cast<T*>(it.Current()));
}
