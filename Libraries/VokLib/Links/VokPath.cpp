#include <VokLib/Links/VokPath.h>

#include <VokLib/Tree/VokWorld.h>

#include <QelTools/Exception.h>

#include "Links/PathResolver.h"
#include "Links/VokPathCache.h"

#include <utility>
#include <vector>

using QelTools::Common::ThrowException;

VokPath::VokPath(std::string pathText) : text(std::move(pathText)) {}

VokPath::VokPath(const VokObj* object) {
    SetFromObject(object);
}

void VokPath::SetFromObject(const VokObj* object) {
    if (object == nullptr) ThrowException("Cannot set path to null obj");
    if (object->IsExactly(VokWorld::TypeId()))
        ThrowException("VokPath cannot currently represent the world");

    std::vector<const std::string*> names;
    std::size_t length = 0;
    for (const VokObj* at = object; !at->IsExactly(VokWorld::TypeId()); at = at->GetParent()) {
        names.push_back(&at->GetName());
        length += 1 + at->GetName().size();
        if (at->GetParent() == nullptr) ThrowException("VokPath must represent object under world");
    }

    std::string path;
    path.reserve(length);
    for (auto name = names.rbegin(); name != names.rend(); ++name) path.append("|").append(**name);
    text = std::move(path);
}

VokObj* VokPath::Resolve(VokObj* root, VokReference** reference, VokPathCache* cache) const {
    if (reference != nullptr) *reference = nullptr;
    if (cache != nullptr) return PathResolver(*cache).Resolve(text, reference);
    VokPathCache own(root);
    return PathResolver(own).Resolve(text, reference);
}
