#pragma once

#include <VokLib/Tree/VokWorld.h>

/// The object whose name stands in front of this one's in a path; null for a world's child, whose
/// name is the first, and for what has no parent.
inline const VokObj* PathParent(const VokObj& object) {
    const VokObj* const parent = object.GetParent();
    return parent != nullptr && !parent->IsExactly(VokWorld::TypeId()) ? parent : nullptr;
}
