#include "Links/VokPathCache.h"

#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokReference.h>

#include "Links/NameSpaces.h"

namespace {

/// Up to here a scan is as fast as an index.
constexpr std::size_t kNarrow = 16;
/// A parent that is asked this often is worth an index.
constexpr unsigned kScansBeforeIndex = 4;
/// Merged scenes take no more than this many names, whatever a document holds.
constexpr std::size_t kMaxMergedNames = std::size_t{1} << 20;

}  // namespace

VokObj* VokPathCache::FindChild(const VokObj& parent, std::string_view name) {
    if (parent.GetChildCount() <= kNarrow) return parent.FindChild(name);
    WideParent& wide = wideParents[&parent];
    if (wide.scans < kScansBeforeIndex) {
        ++wide.scans;
        return parent.FindChild(name);
    }
    if (wide.index == nullptr) wide.index = std::make_unique<NameIndex>(parent);
    return wide.index->Find(name);
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

VokObj* VokPathCache::FindInScenes(SpecialChildren& special, std::string_view name,
                                   std::size_t& tried) {
    if (tried < special.mergedScenes) {
        const auto merged = special.merged.find(name);
        if (merged != special.merged.end()) return merged->second;
        tried = special.mergedScenes;
    }
    VokObj* found = nullptr;
    for (; tried < special.scenes.size(); ++tried) {
        ++special.looks;
        found = FindChild(*special.scenes[tried], name);
        if (found != nullptr) break;
    }
    MergeScenes(special);
    return found;
}

void VokPathCache::MergeScenes(SpecialChildren& special) {
    // A scene is merged when as many looks have been taken as it has children: merging never costs
    // more than the looks before it, and an object with many instances is soon searched at once.
    while (special.mergedScenes < special.scenes.size()) {
        const VokObj& scene = *special.scenes[special.mergedScenes];
        const std::size_t cost = scene.GetChildCount() + 1;
        if (special.looks < cost || mergedNames + cost > kMaxMergedNames) return;
        for (std::size_t i = 0; i < scene.GetChildCount(); ++i)
            special.merged.emplace(scene.GetChild(i)->GetName(), scene.GetChild(i));
        special.looks -= cost;
        mergedNames += cost;
        ++special.mergedScenes;
    }
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
