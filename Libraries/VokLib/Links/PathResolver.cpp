#include "Links/PathResolver.h"

#include <VokLib/Links/VokPath.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokReference.h>
#include <VokLib/Tree/VokScene.h>

#include <QelTools/Exception.h>

#include "Links/NameSpaces.h"
#include "Links/PathParent.h"

#include <algorithm>
#include <utility>

using QelTools::Common::ThrowException;

namespace {

[[noreturn]] void ThrowNoScene() {
    ThrowException("Instance target scene not found");
}

std::size_t SegmentEnd(const std::string& path, std::size_t begin) {
    return std::min(path.find('|', begin), path.size());
}

}  // namespace

PathResolver::~PathResolver() {
    // After a failure the same question gets the same answer.
    for (const Walk& walk : walks)
        if (walk.waiting != nullptr) walk.waiting->resolving = false;
}

VokObj* PathResolver::Resolve(const std::string& path, VokReference** reference) {
    if (path.empty()) return nullptr;
    BeginText(path, nullptr);
    for (;;) {
        const Outcome outcome = Advance(walks.back());
        if (outcome == Outcome::AnotherFirst) continue;
        const Walk done = std::move(walks.back());
        walks.pop_back();
        VokObj* found = outcome == Outcome::Arrived ? done.current : nullptr;
        if (done.waiting != nullptr) {
            AcceptScene(*done.waiting, found);
            continue;
        }
        if (found == nullptr && reference != nullptr) *reference = FindReference(done);
        return found;
    }
}

void PathResolver::BeginAtRoot(Walk walk) {
    walk.current = cache.GetRoot();
    walk.end = SegmentEnd(walk.path, walk.begin);
    walks.push_back(std::move(walk));
}

void PathResolver::BeginText(std::string path, VokPathCache::SpecialChildren* waiting) {
    if (path.front() != '|') ThrowException("Unrecognised path format: " + path);
    BeginAtRoot({std::move(path), waiting, cache.GetRoot()});
}

/// Walks as the object's whole path would, but from its nearest ancestor that was walked to before:
/// many instances can name, in few letters, what lies deep or has a long name.
void PathResolver::BeginObject(const VokObj& object, VokPathCache::SpecialChildren* waiting) {
    VokObj* known = nullptr;
    std::vector<const VokObj*> below;
    for (const VokObj* at = &object; at != nullptr; at = PathParent(*at)) {
        known = cache.FindEndOfPath(*at);
        if (known != nullptr) break;
        below.push_back(at);
    }
    // The world itself and what stands outside of one have no path: the path says so.
    const bool atTop = known == nullptr && below.back()->GetParent() == nullptr;
    if (atTop || object.IsExactly(VokWorld::TypeId())) static_cast<void>(VokPath(&object));

    Walk walk{{}, waiting, known};
    for (auto at = below.rbegin(); at != below.rend(); ++at) {
        walk.path.append("|").append((*at)->GetName());
        walk.names.push_back({*at, walk.path.size()});
    }
    if (known == nullptr) return BeginAtRoot(std::move(walk));
    StepTo(walk, known);
    walks.push_back(std::move(walk));
}

PathResolver::Outcome PathResolver::Advance(Walk& walk) {
    while (walk.begin <= walk.path.size()) {
        VokObj* child = walk.noChild ? nullptr : cache.FindChild(*walk.current, walk.Sought());
        // A path never stops at an instance, nor passes through it, by the instance's own name.
        if (child == nullptr || child->IsExactly(VokInstance::TypeId())) {
            walk.noChild = true;
            VokPathCache::SpecialChildren& special = cache.GetSpecialChildren(*walk.current);
            child = cache.FindInScenes(special, walk.Sought(), walk.scenesTried);
            if (child == nullptr) {
                if (special.resolved == special.instances.size()) return Outcome::NotFound;
                ResolveNextInstance(special);
                return Outcome::AnotherFirst;
            }
        }
        StepTo(walk, child);
    }
    return Outcome::Arrived;
}

void PathResolver::StepTo(Walk& walk, VokObj* object) {
    walk.current = object;
    walk.hash.reset();
    walk.noChild = false;
    walk.scenesTried = 0;
    // A run of bars parts two segments as one does, so that only the first segment can be empty.
    walk.begin = walk.path.find_first_not_of('|', walk.end);
    if (walk.begin == std::string::npos)
        walk.begin = walk.path.size() + 1;
    else
        walk.end = SegmentEnd(walk.path, walk.begin);
    NoteNamesPassed(walk);
}

/// Of a name that holds bars, every segment has to be passed; one without segments is passed with
/// the name in front of it. What was reached stays right while instances are resolved, for the
/// scenes of an object only become more, behind those that a name was found in.
void PathResolver::NoteNamesPassed(Walk& walk) {
    for (; walk.namesPassed < walk.names.size(); ++walk.namesPassed) {
        const NameEnd& name = walk.names[walk.namesPassed];
        if (name.at >= walk.begin) return;
        cache.SetEndOfPath(*name.object, walk.current);
    }
}

void PathResolver::ResolveNextInstance(VokPathCache::SpecialChildren& special) {
    if (special.resolving) ThrowNoScene();
    const VokObjLinkHandle& target = special.instances[special.resolved]->target;
    if (const VokObj* const object = target.FindTarget()) {
        BeginObject(*object, &special);
    } else {
        std::string path = target.GetPath().GetText();
        if (path.empty()) ThrowNoScene();
        BeginText(std::move(path), &special);
    }
    special.resolving = true;
}

void PathResolver::AcceptScene(VokPathCache::SpecialChildren& special, VokObj* target) {
    special.resolving = false;
    if (target == nullptr || !target->IsExactly(VokScene::TypeId())) ThrowNoScene();
    if (special.placesOfScenes.emplace(target, special.scenes.size()).second)
        special.scenes.push_back(target);
    ++special.resolved;
}

VokReference* PathResolver::FindReference(const Walk& walk) {
    const std::size_t nameSpace = NameSpaceOf(walk.current->GetName()).size();
    std::string rest(walk.Segment().substr(std::min(nameSpace, walk.Segment().size())));
    if (rest.starts_with(':')) rest.erase(0, 1);
    if (const std::size_t colon = rest.find(':'); colon != std::string::npos) {
        rest.resize(colon);
        const auto& near = cache.GetSpecialChildren(*walk.current).references;
        if (const auto found = near.find(rest); found != near.end()) return found->second;
    }
    // A path into the hierarchy means this document; its failure is a failure.
    if (walk.path.starts_with("||") || walk.path == "|") return nullptr;
    return cache.FindReference(rest);
}
