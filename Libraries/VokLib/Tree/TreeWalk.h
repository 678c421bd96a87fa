#pragma once

#include <cstddef>
#include <vector>

/// Calls `visit` with `root` and everything beneath it, objects before their children, without
/// recursion; where it returns false the children are left out. `Object` is VokObj or const VokObj.
template <class Object, class Visit>
void WalkTree(Object& root, Visit visit) {
    struct Place {
        Object* object;
        std::size_t nextChild;
    };
    std::vector<Place> open;
    if (visit(root)) open.push_back({&root, 0});
    while (!open.empty()) {
        Place& place = open.back();
        if (place.nextChild == place.object->GetChildCount()) {
            open.pop_back();
            continue;
        }
        Object* child = place.object->GetChild(place.nextChild++);
        if (visit(*child)) open.push_back({child, 0});
    }
}
