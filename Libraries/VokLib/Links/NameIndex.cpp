#include "Links/NameIndex.h"

#include <Platform/Prefetch.h>
#include <VokLib/Tree/VokObj.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <string>

namespace {

/// Of bits that do not choose the slot in tables of any size that fits into memory; never 0.
std::uint16_t TagOf(std::size_t hash) {
    return static_cast<std::uint16_t>(hash >> (std::numeric_limits<std::size_t>::digits - 16)) | 1;
}

void PrefetchName(const VokObj* child) {
    Platform::Prefetch(&child->GetName());
}

}  // namespace

NameIndex::NameIndex(const VokObj& parent)
    : tags(std::bit_ceil(2 * parent.GetChildCount() + 1)), children(tags.size()) {
    constexpr std::size_t kAhead = 8;
    const std::size_t count = parent.GetChildCount();
    for (std::size_t i = 0; i < count; ++i) {
        PrefetchName(parent.GetChild(std::min(i + kAhead, count - 1)));
        VokObj* const child = parent.GetChild(i);
        const std::size_t hash = HashOf(child->GetName());
        const std::size_t slot = FindSlot(child->GetName(), hash);
        if (tags[slot] != 0) continue;
        tags[slot] = TagOf(hash);
        children[slot] = child;
    }
}

void NameIndex::PrefetchSlot(std::size_t hash) const {
    const std::size_t slot = hash & (tags.size() - 1);
    Platform::Prefetch(&tags[slot]);
    Platform::Prefetch(&children[slot]);
}

void NameIndex::PrefetchChild(std::size_t hash) const {
    const VokObj* const child = children[NextSlot(hash & (tags.size() - 1), TagOf(hash))];
    if (child == nullptr) return;
    PrefetchName(child);
    // The end of the base, for the link that finds it.
    Platform::Prefetch(reinterpret_cast<const char*>(child + 1) - 1);
}

std::size_t NameIndex::NextSlot(std::size_t at, std::uint16_t tag) const {
    while (tags[at] != 0 && tags[at] != tag) at = (at + 1) & (tags.size() - 1);
    return at;
}

std::size_t NameIndex::FindSlot(std::string_view name, std::size_t hash) const {
    const std::size_t mask = tags.size() - 1;
    std::size_t at = NextSlot(hash & mask, TagOf(hash));
    while (tags[at] != 0 && children[at]->GetName() != name)
        at = NextSlot((at + 1) & mask, TagOf(hash));
    return at;
}
