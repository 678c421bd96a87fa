#include <VokLib/Links/VokUnresolvedLinks.h>

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Links/VokObjLink.h>

#include "Links/PathParent.h"

#include <vector>

VokTextTree::Place VokUnresolvedLinks::PlaceOf(const VokObj* owner) {
    if (owner == nullptr) return texts.Append(VokTextTree::kStart, "?");
    std::vector<const VokObj*> unknown;
    const VokObj* at = owner;
    for (; at != nullptr && !places.contains(at); at = PathParent(*at)) {
        // The world itself and what stands outside of one have no path: the path says so.
        if (at->GetParent() == nullptr) static_cast<void>(VokPath(owner));
        unknown.push_back(at);
    }
    VokTextTree::Place place = at != nullptr ? places[at] : VokTextTree::kStart;
    for (auto object = unknown.rbegin(); object != unknown.rend(); ++object) {
        place = texts.Append(texts.Append(place, "|"), (*object)->GetName());
        places.emplace(*object, place);
    }
    return place;
}

void VokUnresolvedLinks::Add(const VokObjLink& link) {
    texts.Add(texts.Append(texts.Append(PlaceOf(link.owner), "->"), link.path));
}

std::size_t VokUnresolvedLinks::Count() const {
    return texts.Count();
}

std::size_t VokUnresolvedLinks::VisitTexts(
    std::size_t most, const std::function<void(const std::string&)>& visit) const {
    std::size_t visited = 0;
    std::size_t bytes = 0;
    texts.VisitTexts([&](const std::string& text) {
        bytes += text.size();
        if (visited == most || (bytes > VokLimits::kMaxUnresolvedText && visited > 0)) return false;
        visit(text);
        ++visited;
        return true;
    });
    return visited;
}
