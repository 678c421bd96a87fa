#include "Links/NameIndex.h"

#include <VokLib/Tree/VokObj.h>

#include <bit>
#include <functional>

NameIndex::NameIndex(const VokObj& parent) : slots(std::bit_ceil(2 * parent.GetChildCount() + 1)) {
    for (std::size_t i = 0; i < parent.GetChildCount(); ++i) {
        VokObj* child = parent.GetChild(i);
        VokObj*& slot = slots[FindSlot(child->GetName())];
        if (slot == nullptr) slot = child;
    }
}

VokObj* NameIndex::Find(std::string_view name) const {
    return slots[FindSlot(name)];
}

std::size_t NameIndex::FindSlot(std::string_view name) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = std::hash<std::string_view>()(name) & mask;
    while (slots[slot] != nullptr && slots[slot]->GetName() != name) slot = (slot + 1) & mask;
    return slot;
}
