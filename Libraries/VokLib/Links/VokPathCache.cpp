#include "Links/VokPathCache.h"

#include <VokLib/VokCast.h>
#include <VokLib/VokInstance.h>
#include <VokLib/VokItHierarchy.h>
#include <VokLib/VokReference.h>

#include "Links/NameSpaces.h"

namespace {

/// Up to here a scan is as fast as an index.
constexpr std::size_t kNarrow = 16;
/// A parent that is asked this often is worth an index.
constexpr unsigned kScansBeforeIndex = 4;

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
    const auto [entry, isNew] = special.try_emplace(&parent);
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
