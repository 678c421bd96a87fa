#include <VokLib/Tree/VokObj.h>

#include "Base/ObjectPool.h"

#include <VokLib/Links/VokObjLinkStore.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokBulk.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <utility>

namespace {

bool nameCheck = false;

}  // namespace

VokObj::~VokObj() {
    DeleteDescendants();
    CutIncomingLinks();
}

void VokObj::DeleteDescendants() noexcept {
    // A list of children is turned round on the way down and eaten from its end: first child first,
    // no stack.
    VokObj* at = this;
    std::reverse(children.begin(), children.end());
    while (at != this || !children.empty()) {
        VokObj* leaf = at;
        if (!at->children.empty()) {
            leaf = at->children.back();
            if (!leaf->children.empty()) {
                at = leaf;
                std::reverse(at->children.begin(), at->children.end());
                continue;
            }
        } else {
            at = at->parent;
        }
        at->children.pop_back();
        delete leaf;
    }
}

void VokObj::CutIncomingLinks() noexcept {
    while (firstIncoming != nullptr) {
        VokObjLink* link = firstIncoming;
        try {
            if (link->removed != nullptr) link->removed(VokObjLinkStore::Get(), *link, link->user);
        } catch (...) {
            // A dying object has nobody to tell; the link is cut below.
        }
        if (firstIncoming != link) continue;
        UnlinkIncoming(*link);
        link->target = nullptr;
    }
}

void VokObj::AddIncomingLink(VokObjLinkStore&, VokObjLink& link) {
    link.incomingAt = this;
    link.previousIncoming = lastIncoming;
    link.nextIncoming = nullptr;
    (lastIncoming != nullptr ? lastIncoming->nextIncoming : firstIncoming) = &link;
    lastIncoming = &link;
}

void VokObj::RemoveIncomingLink(VokObjLinkStore&, VokObjLink& link) {
    if (link.incomingAt != this) ThrowVokException("Could not find objlink to remove", this);
    UnlinkIncoming(link);
}

void VokObj::UnlinkIncoming(VokObjLink& link) noexcept {
    (link.previousIncoming != nullptr ? link.previousIncoming->nextIncoming : firstIncoming) =
        link.nextIncoming;
    (link.nextIncoming != nullptr ? link.nextIncoming->previousIncoming : lastIncoming) =
        link.previousIncoming;
    link.previousIncoming = nullptr;
    link.nextIncoming = nullptr;
    link.incomingAt = nullptr;
}

void VokObj::SetNameCheck(bool on) {
    nameCheck = on;
}

void VokObj::SetName(std::string newName) {
    if (nameCheck && newName.find('|') != std::string::npos)
        ThrowVokException("The string \"" + newName + "\" is not a valid name for an VokObj.",
                          this);
    name = std::move(newName);
}

std::string VokObj::GetBaseName() const {
    const std::size_t colon = name.rfind(':');
    if (colon == std::string::npos) return name;
    if (colon >= name.size()) ThrowVokException("error finding namespace", this);
    return name.substr(colon + 1);
}

VokObj* VokObj::FindChild(std::string_view childName) const {
    const auto found = std::find_if(children.begin(), children.end(), [childName](VokObj* child) {
        return child->name == childName;
    });
    return found != children.end() ? *found : nullptr;
}

void VokObj::CheckNewChild(const VokObj* child) const {
    if (child == nullptr) ThrowVokException("Cannot add NULL child", this);
    if (child->parent != nullptr) ThrowVokException("Child-to-be already parented", this);
}

void VokObj::AddChild(VokObj* child) {
    CheckNewChild(child);
    children.push_back(child);
    child->parent = this;
    child->heldDepth = heldDepth;
}

void VokObj::InsertChild(VokObj* child, std::size_t index) {
    CheckNewChild(child);
    if (index > children.size()) ThrowVokException("Index for new child out of range", this);
    children.insert(children.begin() + static_cast<std::ptrdiff_t>(index), child);
    child->parent = this;
    child->heldDepth = heldDepth;
}

void VokObj::InsertChildBefore(VokObj* child, const VokObj* before) {
    CheckNewChild(child);
    children.insert(std::find(children.begin(), children.end(), before), child);
    child->parent = this;
    child->heldDepth = heldDepth;
}

VokObj* VokObj::RemoveChild(std::size_t index) {
    if (index >= children.size()) ThrowVokException("Child index out of range", this);
    VokObj* child = children[index];
    children.erase(children.begin() + static_cast<std::ptrdiff_t>(index));
    child->parent = nullptr;
    return child;
}

VokObj* VokObj::RemoveChild(const VokObj* child) {
    const auto found = std::find(children.begin(), children.end(), child);
    if (found == children.end()) return nullptr;
    return RemoveChild(static_cast<std::size_t>(found - children.begin()));
}

void VokObj::DeleteChild(VokObj* child) {
    delete RemoveChild(child);
}

void VokObj::AdoptChildren(VokObj& from) {
    children.reserve(children.size() + from.children.size());
    for (VokObj* child : from.children) {
        child->parent = this;
        child->heldDepth = heldDepth;
        children.push_back(child);
    }
    from.children.clear();
}

bool VokObj::IsDescendantOf(const VokObj* ancestor) const {
    const VokObj* at = this;
    while (at != nullptr && at != ancestor) at = at->parent;
    return at != nullptr;
}

VokWorld* VokObj::GetWorld() const {
    return GetWorld(this);
}

VokWorld* VokObj::GetWorld(const VokObj* object) {
    if (object == nullptr) ThrowVokException("this is NULL");
    const VokObj* top = object;
    while (top->parent != nullptr) top = top->parent;
    if (!top->IsExactly(VokWorld::TypeId()))
        ThrowVokException("GetWorld() did not find an VokWorld", object);
    return static_cast<VokWorld*>(const_cast<VokObj*>(top));
}

VokCustomData& VokObj::GetCustomData() {
    if (customDataLeftOut || (customData != nullptr && customData->HasLeftOut()))
        ThrowNotLoaded(this);
    if (customData == nullptr) customData = std::make_unique<VokCustomData>();
    return *customData;
}

const VokCustomData& VokObj::GetCustomData() const {
    static const VokCustomData kNone;
    if (customDataLeftOut || (customData != nullptr && customData->HasLeftOut()))
        ThrowNotLoaded(this);
    return customData != nullptr ? *customData : kNone;
}

bool VokObj::IsA(VokTypeId) const {
    return false;
}

void* VokObj::operator new(std::size_t size) {
    return ObjectPool::Take(size);
}

void VokObj::operator delete(void* memory, std::size_t size) noexcept {
    ObjectPool::Give(memory, size);
}
