#include "Procedural/DocumentOrder.h"

#include <VokLib/Tree/VokItHierarchy.h>

DocumentOrder::DocumentOrder(VokObj& world) {
    VokItHierarchy it(&world);
    while (const VokObj* object = it.Next())
        numbers.emplace(object, static_cast<std::uint32_t>(numbers.size() + 1));
}

std::uint32_t DocumentOrder::NumberOf(const VokObj* object) const {
    const auto found = numbers.find(object);
    return found == numbers.end() ? 0 : found->second;
}
