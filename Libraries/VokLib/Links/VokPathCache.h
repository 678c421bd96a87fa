#pragma once

#include <QelTools/KeyedHash.h>

#include "Links/NameIndex.h"
#include "Links/SoughtName.h"

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
    template <class Key, class Value>
    using KeyedMap = std::unordered_map<Key, Value, QelTools::Common::KeyedHash>;

  public:
    /// The children of one object that lead elsewhere.
    struct SpecialChildren {
        std::vector<VokInstance*> instances;  // in order
        /// The target scenes of the first `resolved` instances, in order, each once.
        std::vector<VokObj*> scenes;
        std::size_t resolved = 0;
        /// The next instance is being resolved; who comes by here again goes in a circle.
        bool resolving = false;
        std::unordered_map<const VokObj*, std::size_t> placesOfScenes;
        /// The first so many scenes stand in the index of names.
        std::size_t indexedScenes = 0;
        std::size_t looks = 0;  // into single scenes, not yet weighed against indexing one
        /// What a name found in the indexed scenes, where that took long.
        struct Answer {
            std::size_t scenes = 0;  ///< of which it is the answer
            VokObj* child = nullptr;
        };
        KeyedMap<std::string_view, Answer> answers;
        /// The first reference of each namespace.
        KeyedMap<std::string, VokReference*> references;
    };

    explicit VokPathCache(VokObj* rootObject) : root(rootObject) {}

    VokObj* GetRoot() const { return root; }
    /// As VokObj::FindChild.
    VokObj* FindChild(const VokObj& parent, const SoughtName& name);
    /// The index of names in which a child was looked for last; null before.
    const NameIndex* GetLastIndex() const { return lastIndex; }
    SpecialChildren& GetSpecialChildren(const VokObj& parent);
    /// The first child of this name in the scenes found so far, those before number `tried` being
    /// known not to have one; raises `tried` to their number when there is none.
    VokObj* FindInScenes(SpecialChildren& special, const SoughtName& name, std::size_t& tried);
    /// What the whole path of this object leads to, instances on the way included, which need not
    /// be the object; null while that was not noted.
    VokObj* FindEndOfPath(const VokObj& object) const {
        const auto found = endsOfPaths.find(&object);
        return found != endsOfPaths.end() ? found->second : nullptr;
    }
    void SetEndOfPath(const VokObj& object, VokObj* end) { endsOfPaths.emplace(&object, end); }
    /// The first reference under the root, in pre-order, whose namespace with the namespaces of its
    /// own name is `full`.
    VokReference* FindReference(const std::string& full);

  private:
    struct WideParent {
        unsigned scans = 0;
        std::unique_ptr<NameIndex> index;
    };

    /// A scene that has a child of some name, and the first such child.
    struct NamedChild {
        VokObj* scene;
        VokObj* child;
    };

    void IndexScenes(SpecialChildren& special);
    VokObj* FindInIndex(SpecialChildren& special, const SoughtName& name, std::size_t tried);
    VokObj* FindFirst(const SpecialChildren& special, const SoughtName& name,
                      const std::vector<NamedChild>& named, std::size_t tried);

    VokObj* root;
    const NameIndex* lastIndex = nullptr;
    /// The children of the indexed scenes, each scene entered once for all objects that reach it.
    KeyedMap<std::string_view, std::vector<NamedChild>> childrenByName;
    std::unordered_set<const VokObj*> indexed;
    std::unordered_map<const VokObj*, WideParent> wideParents;
    std::unordered_map<const VokObj*, SpecialChildren> specialOfParents;
    std::unordered_map<const VokObj*, VokObj*> endsOfPaths;
    bool knowsReferences = false;
    KeyedMap<std::string, VokReference*> references;
};
