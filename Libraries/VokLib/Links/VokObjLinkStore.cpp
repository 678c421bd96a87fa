#include <VokLib/Links/VokObjLinkStore.h>

#include <VokLib/Tree/VokObj.h>

#include <QelTools/Exception.h>

#include "Base/BlockPool.h"
#include "Links/LinkForesight.h"
#include "Links/PathResolver.h"
#include "Links/VokPathCache.h"

#include <new>
#include <utility>

using QelTools::Common::ThrowException;
using Guard = std::lock_guard<std::recursive_mutex>;

namespace {

bool wasEmptyAtDestruction = true;

}  // namespace

VokObjLinkStore::VokObjLinkStore() : pool(std::make_unique<BlockPool>(sizeof(VokObjLink))) {}

VokObjLinkStore::~VokObjLinkStore() noexcept(false) {
    wasEmptyAtDestruction = first == nullptr;
    while (first != nullptr) {
        VokObjLinkHandle::Forget(*first);
        Remove(first);
    }
}

bool VokObjLinkStore::WasEmptyAtDestruction() {
    return wasEmptyAtDestruction;
}

VokObjLink& VokObjLinkStore::Append(VokObj* owner, VokLinkRemoved removed, void* user) {
    VokObjLink* link = ::new (pool->Take()) VokObjLink;
    link->owner = owner;
    link->removed = removed;
    link->user = user;
    link->previous = last;
    (last != nullptr ? last->next : first) = link;
    last = link;
    ++count;
    return *link;
}

VokObjLink& VokObjLinkStore::AddResolved(VokObj* owner, VokObj* target, VokLinkRemoved removed,
                                         void* user) {
    const Guard guard(lock);
    VokObjLink& link = Append(owner, removed, user);
    link.target = target;
    target->AddIncomingLink(*this, link);
    return link;
}

VokObjLink& VokObjLinkStore::AddUnresolved(VokObj* owner, std::string path, VokLinkRemoved removed,
                                           void* user) {
    const Guard guard(lock);
    VokObjLink& link = Append(owner, removed, user);
    link.path = std::move(path);
    return link;
}

void VokObjLinkStore::Remove(VokObjLink* link) {
    const Guard guard(lock);
    if (link == nullptr) return;
    if (link == upcoming) upcoming = link->next;
    if (link->incomingAt != nullptr) link->incomingAt->UnlinkIncoming(*link);
    (link->previous != nullptr ? link->previous->next : first) = link->next;
    (link->next != nullptr ? link->next->previous : last) = link->previous;
    --count;
    link->~VokObjLink();
    pool->Give(link);
}

std::size_t VokObjLinkStore::ResolveLinks(VokObj* world, std::set<std::string>* unresolved,
                                          bool retryDeferred) {
    const auto addText = [unresolved](const VokObjLink& link) {
        if (unresolved == nullptr) return;
        const std::string owner = link.owner != nullptr ? VokPath(link.owner).GetText() : "?";
        unresolved->insert(owner + "->" + link.path);
    };
    return ResolveLinks(world, std::function<void(const VokObjLink&)>(addText), retryDeferred);
}

std::size_t VokObjLinkStore::ResolveLinks(VokObj* world,
                                          const std::function<void(const VokObjLink&)>& failed,
                                          bool retryDeferred) {
    const Guard guard(lock);
    VokPathCache cache(world);
    PathResolver resolver(cache);
    LinkForesight foresight(cache, first);
    std::size_t failures = 0;
    for (VokObjLink* link = first; link != nullptr; link = link->next) {
        foresight.Step();
        const bool fresh = link->state == VokLinkState::Fresh && !link->path.empty();
        if (!fresh && !(retryDeferred && link->state == VokLinkState::Deferred)) continue;
        if (link->target != nullptr) ThrowException("Unresolved objlink already has target");

        VokReference* reference = nullptr;
        if (VokObj* target = resolver.Resolve(link->path, &reference)) {
            link->target = target;
            link->state = VokLinkState::Resolved;
            target->AddIncomingLink(*this, *link);
            std::string().swap(link->path);
        } else if (reference != nullptr) {
            link->state = VokLinkState::Deferred;
        } else {
            ++failures;
            link->state = VokLinkState::Failed;
            failed(*link);
        }
    }
    return failures;
}

void VokObjLinkStore::RemoveUnresolved() {
    const Guard guard(lock);
    // A callback may end more records than its own; Remove keeps `upcoming` on a living one.
    VokObjLink* link = first;
    while (link != nullptr) {
        upcoming = link->next;
        if (link->state == VokLinkState::Failed && link->removed != nullptr)
            link->removed(*this, *link, link->user);
        link = std::exchange(upcoming, nullptr);
    }
}

void VokObjLinkStore::SwapLinkTargets(VokObj* oldTarget, VokObj* newTarget) {
    const Guard guard(lock);
    if (oldTarget == newTarget) return;
    while (VokObjLink* link = oldTarget->firstIncoming) {
        if (!link->path.empty()) ThrowException("Unexpected state in SwapLinkTargets()");
        oldTarget->RemoveIncomingLink(*this, *link);
        newTarget->AddIncomingLink(*this, *link);
        link->target = newTarget;
    }
}
