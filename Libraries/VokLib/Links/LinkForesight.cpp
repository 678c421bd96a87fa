#include "Links/LinkForesight.h"

#include <VokLib/Links/VokObjLink.h>

#include "Links/NameIndex.h"
#include "Links/VokPathCache.h"

#include <string_view>

namespace {

std::size_t HashOfLastName(const VokObjLink& link) {
    const std::string_view path = link.path;
    return NameIndex::HashOf(path.substr(path.rfind('|') + 1));
}

}  // namespace

LinkForesight::LinkForesight(const VokPathCache& pathCache, const VokObjLink* firstLink)
    : cache(pathCache), far(firstLink) {
    for (std::size_t i = 0; i < kLinksAhead && far != nullptr; ++i) far = far->GetNext();
}

void LinkForesight::Step() {
    const NameIndex* const index = cache.GetLastIndex();
    if (index != nullptr) {
        std::size_t& entry = hashes[steps % kLinksAhead];
        index->PrefetchChild(hashes[(steps + kLinksAhead / 2) % kLinksAhead]);
        if (far != nullptr) {
            entry = HashOfLastName(*far);
            index->PrefetchSlot(entry);
        }
    }
    ++steps;
    if (far != nullptr) far = far->GetNext();
}
