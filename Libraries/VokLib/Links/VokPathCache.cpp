#include "Links/VokPathCache.h"

#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokReference.h>

#include "Links/NameSpaces.h"

#include <algorithm>

namespace {

/// Up to here a scan is as fast as an index.
constexpr std::size_t kNarrow = 16;
/// A parent that is asked this often is worth an index.
constexpr unsigned kScansBeforeIndex = 1;
/// Up to here a search in the index is quick enough to be repeated.
constexpr std::size_t kFew = 8;

}  // namespace

VokObj* VokPathCache::FindChild(const VokObj& parent, const SoughtName& name) {
    if (parent.GetChildCount() <= kNarrow) return parent.FindChild(name.GetText());
    WideParent& wide = wideParents[&parent];
    if (wide.scans < kScansBeforeIndex) {
        ++wide.scans;
        return parent.FindChild(name.GetText());
    }
    if (wide.index == nullptr) wide.index = std::make_unique<NameIndex>(parent);
    lastIndex = wide.index.get();
    return wide.index->Find(name.GetText(), name.GetHash());
}

VokPathCache::SpecialChildren& VokPathCache::GetSpecialChildren(const VokObj& parent) {
    const auto [entry, isNew] = specialOfParents.try_emplace(&parent);
    SpecialChildren& found = entry->second;
    for (std::size_t i = 0; isNew && i < parent.GetChildCount(); ++i) {
        VokObj* child = parent.GetChild(i);
        if (VokInstance* instance = ExactCast<VokInstance>(child))
            found.instances.push_back(instance);
        else if (VokReference* reference = ExactCast<VokReference>(child))
            found.references.emplace(reference->referenceNamespace, reference);
    }
    return found;
}

VokObj* VokPathCache::FindInScenes(SpecialChildren& special, const SoughtName& name,
                                   std::size_t& tried) {
    if (tried < special.indexedScenes) {
        if (VokObj* const found = FindInIndex(special, name, tried)) return found;
        tried = special.indexedScenes;
    }
    VokObj* found = nullptr;
    for (; tried < special.scenes.size(); ++tried) {
        ++special.looks;
        found = FindChild(*special.scenes[tried], name);
        if (found != nullptr) break;
    }
    IndexScenes(special);
    return found;
}

void VokPathCache::IndexScenes(SpecialChildren& special) {
    // A scene is indexed when as many looks have been taken as it has children: that never costs
    // more than the looks before it, and an object with many instances is soon searched at once.
    while (special.indexedScenes < special.scenes.size()) {
        VokObj* const scene = special.scenes[special.indexedScenes];
        const bool isNew = !indexed.contains(scene);
        const std::size_t cost = isNew ? scene->GetChildCount() + 1 : 1;
        if (special.looks < cost) return;
        special.looks -= cost;
        ++special.indexedScenes;
        if (!isNew) continue;
        indexed.insert(scene);
        for (std::size_t i = 0; i < scene->GetChildCount(); ++i) {
            VokObj* const child = scene->GetChild(i);
            std::vector<NamedChild>& named = childrenByName[child->GetName()];
            if (named.empty() || named.back().scene != scene) named.push_back({scene, child});
        }
    }
}

VokObj* VokPathCache::FindInIndex(SpecialChildren& special, const SoughtName& name,
                                  std::size_t tried) {
    const auto named = childrenByName.find(name.GetText());
    if (named == childrenByName.end()) return nullptr;
    if (std::min(named->second.size(), special.indexedScenes) <= kFew)
        return FindFirst(special, name, named->second, tried);
    // The scenes in front of `tried` have no such child, so that one answer holds for all.
    SpecialChildren::Answer& answer = special.answers[named->first];
    if (answer.child == nullptr && answer.scenes < special.indexedScenes) {
        answer.child = FindFirst(special, name, named->second, std::max(tried, answer.scenes));
        answer.scenes = special.indexedScenes;
    }
    return answer.child;
}

/// Goes through the scenes that have the name or through those of the object, whichever are fewer.
VokObj* VokPathCache::FindFirst(const SpecialChildren& special, const SoughtName& name,
                                const std::vector<NamedChild>& named, std::size_t tried) {
    if (named.size() > special.indexedScenes) {
        for (std::size_t i = tried; i < special.indexedScenes; ++i)
            if (VokObj* found = FindChild(*special.scenes[i], name)) return found;
        return nullptr;
    }
    std::size_t first = special.indexedScenes;
    VokObj* found = nullptr;
    for (const NamedChild& entry : named) {
        const auto place = special.placesOfScenes.find(entry.scene);
        if (place == special.placesOfScenes.end()) continue;
        if (place->second < tried || place->second >= first) continue;
        first = place->second;
        found = entry.child;
    }
    return found;
}

VokReference* VokPathCache::FindReference(const std::string& full) {
    if (!knowsReferences) {
        ForEach<VokReference>(root, [this](VokReference& reference) {
            std::string key(NameSpaceOf(reference.GetName()));
            if (!key.empty()) key += ':';
            references.emplace(key + reference.referenceNamespace, &reference);
        });
        knowsReferences = true;
    }
    const auto found = references.find(full);
    return found != references.end() ? found->second : nullptr;
}
