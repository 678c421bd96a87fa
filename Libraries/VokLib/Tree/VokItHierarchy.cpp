#include <VokLib/Tree/VokItHierarchy.h>

namespace {

/// Where the walk goes on behind `object`, which stood at `index` when it was reached; past the end
/// for none. A tree that has changed in the meantime is searched.
std::size_t FindNextIndex(const VokObj& parent, const VokObj* object, std::size_t index) {
    const std::size_t count = parent.GetChildCount();
    if (index < count && parent.GetChild(index) == object) return index + 1;
    for (std::size_t i = 0; i < count; ++i)
        if (parent.GetChild(i) == object) return i + 1;
    return count;
}

}  // namespace

VokItHierarchy::VokItHierarchy(VokObj* root, Kind traversal, VokTypeId type) {
    Reset(root, traversal, type);
}

void VokItHierarchy::Reset(VokObj* root, Kind traversal, VokTypeId type) {
    kind = traversal;
    filter = type;
    skipChildren = false;
    stack.clear();
    queue.clear();
    leftInLevel = 0;
    inNextLevel = 0;
    level = 0;
    if (kind == Kind::DepthFirst) {
        stack.push_back({root, 0});
    } else {
        queue.push_back(root);
        leftInLevel = 1;
    }
    if (filter != 0 && !AtEnd() && !root->IsExactly(filter)) Next();
}

VokObj* VokItHierarchy::Current() const {
    if (kind == Kind::DepthFirst) return stack.empty() ? nullptr : stack.back().object;
    return queue.empty() ? nullptr : queue.front();
}

VokObj* VokItHierarchy::Next() {
    VokObj* object = Step();
    while (filter != 0 && object != nullptr && !object->IsExactly(filter)) object = Step();
    return object;
}

VokObj* VokItHierarchy::Step() {
    if (AtEnd()) return nullptr;
    return kind == Kind::DepthFirst ? StepDepthFirst() : StepBreadthFirst();
}

VokObj* VokItHierarchy::StepDepthFirst() {
    VokObj* current = stack.back().object;
    if (!skipChildren && current->GetChildCount() != 0) {
        stack.push_back({current->GetChild(0), 0});
        return stack.back().object;
    }
    skipChildren = false;
    for (;;) {
        const Place done = stack.back();
        stack.pop_back();
        if (stack.empty()) return nullptr;
        const VokObj& parent = *stack.back().object;
        const std::size_t next = FindNextIndex(parent, done.object, done.index);
        if (next < parent.GetChildCount()) {
            stack.push_back({parent.GetChild(next), next});
            return stack.back().object;
        }
    }
}

VokObj* VokItHierarchy::StepBreadthFirst() {
    const VokObj* front = queue.front();
    if (!skipChildren) {
        inNextLevel += front->GetChildCount();
        for (std::size_t i = 0; i < front->GetChildCount(); ++i)
            queue.push_back(front->GetChild(i));
    }
    skipChildren = false;
    queue.pop_front();
    if (--leftInLevel == 0) {
        ++level;
        leftInLevel = inNextLevel;
        inNextLevel = 0;
    }
    return Current();
}
