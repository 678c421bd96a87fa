#include <VokLib/Links/VokObjLink.h>
#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Tree/VokObj.h>

#include <QelTools/Exception.h>

#include <mutex>
#include <utility>

using QelTools::Common::ThrowException;
using Guard = std::lock_guard<std::recursive_mutex>;

VokObjLinkHandle::VokObjLinkHandle(VokObj* ownerObject) : owner(ownerObject) {}

VokObjLinkHandle::VokObjLinkHandle(VokObj* ownerObject, std::string path, VokLinkRemoved removed,
                                   void* user)
    : owner(ownerObject) {
    SetTargetPath(std::move(path), removed, user);
}

VokObjLinkHandle::VokObjLinkHandle(VokObj* ownerObject, const VokObjLinkHandle& other,
                                   VokLinkRemoved removed, void* user)
    : owner(ownerObject) {
    if (!other.IsValid()) return;
    if (other.HasTarget())
        SetTarget(other.link->target, removed, user);
    else
        SetTargetPath(other.link->path, removed, user);
}

VokObjLinkHandle::~VokObjLinkHandle() {
    Drop();
}

VokObjLinkHandle::VokObjLinkHandle(VokObjLinkHandle&& other) noexcept {
    TakeOver(other);
}

VokObjLinkHandle& VokObjLinkHandle::operator=(VokObjLinkHandle&& other) noexcept {
    if (this != &other) {
        Drop();
        TakeOver(other);
    }
    return *this;
}

void VokObjLinkHandle::TakeOver(VokObjLinkHandle& other) noexcept {
    owner = other.owner;
    link = std::exchange(other.link, nullptr);
    if (link != nullptr && link->user == &other) link->user = this;
}

void VokObjLinkHandle::Drop() noexcept {
    VokObjLink* held = std::exchange(link, nullptr);
    // A store that is gone has taken its records along.
    if (held != nullptr && VokObjLinkStore::Exists()) VokObjLinkStore::Get().Remove(held);
}

void VokObjLinkHandle::Release() {
    if (link == nullptr) return;
    if (link->target == nullptr) ThrowException("objlink has valid iterator but no target");
    Drop();
}

void VokObjLinkHandle::SetTarget(VokObj* object, VokLinkRemoved removed, void* user) {
    VokObjLinkStore& store = VokObjLinkStore::Get();
    const Guard guard(store.GetLock());
    Release();
    if (object == nullptr) return;
    link = removed != nullptr ? &store.AddResolved(owner, object, removed, user)
                              : &store.AddResolved(owner, object, OnRemoved, this);
}

void VokObjLinkHandle::SetTargetPath(std::string path, VokLinkRemoved removed, void* user) {
    VokObjLinkStore& store = VokObjLinkStore::Get();
    const Guard guard(store.GetLock());
    Release();
    link = removed != nullptr ? &store.AddUnresolved(owner, std::move(path), removed, user)
                              : &store.AddUnresolved(owner, std::move(path), OnRemoved, this);
}

VokObj* VokObjLinkHandle::GetTarget() const {
    if (link == nullptr) ThrowException("VokObjLinkHandle has invalid iterator");
    if (link->target == nullptr) ThrowException("VokObjLinkHandle has NULL target: " + link->path);
    return link->target;
}

VokObj* VokObjLinkHandle::FindTarget() const {
    return link != nullptr ? link->target : nullptr;
}

VokPath VokObjLinkHandle::GetPath() const {
    if (link == nullptr) return {};
    return link->target != nullptr ? VokPath(link->target) : VokPath(link->path);
}

bool VokObjLinkHandle::HasTarget() const {
    return FindTarget() != nullptr;
}

void VokObjLinkHandle::OnRemoved(VokObjLinkStore& store, VokObjLink&, void* user) {
    // The target, if there is one, loses its entry as the record goes.
    store.Remove(std::exchange(static_cast<VokObjLinkHandle*>(user)->link, nullptr));
}

void VokObjLinkHandle::Forget(VokObjLink& link) noexcept {
    if (link.removed == OnRemoved) static_cast<VokObjLinkHandle*>(link.user)->link = nullptr;
}
