#pragma once

#include "Links/NameIndex.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class VokInstance;
class VokObj;
class VokReference;

/// What many resolutions of paths against one unchanging tree have in common. Everything in it is
/// found out when it is first needed. Its maps are for looking up alone; order always comes from
/// the tree.
class VokPathCache {
  public:
    /// The children of one object that lead elsewhere.
    struct SpecialChildren {
        std::vector<VokInstance*> instances;  // in order
        /// The target scenes of the first `resolved` instances, in order, each once.
        std::vector<VokObj*> scenes;
        std::size_t resolved = 0;
        /// The next instance is being resolved; who comes by here again goes in a circle.
        bool resolving = false;
        std::unordered_set<const VokObj*> knownScenes;
        /// The first reference of each namespace.
        std::unordered_map<std::string, VokReference*> references;
    };

    explicit VokPathCache(VokObj* rootObject) : root(rootObject) {}

    VokObj* GetRoot() const { return root; }
    /// As VokObj::FindChild.
    VokObj* FindChild(const VokObj& parent, std::string_view name);
    SpecialChildren& GetSpecialChildren(const VokObj& parent);
    /// The first reference under the root, in pre-order, whose namespace with the namespaces of its
    /// own name is `full`.
    VokReference* FindReference(const std::string& full);

  private:
    struct WideParent {
        unsigned scans = 0;
        std::unique_ptr<NameIndex> index;
    };

    VokObj* root;
    std::unordered_map<const VokObj*, WideParent> wideParents;
    std::unordered_map<const VokObj*, SpecialChildren> special;
    bool knowsReferences = false;
    std::unordered_map<std::string, VokReference*> references;
};
