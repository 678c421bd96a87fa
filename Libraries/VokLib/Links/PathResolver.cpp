#include "Links/PathResolver.h"

#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokReference.h>
#include <VokLib/Tree/VokScene.h>

#include <QelTools/Exception.h>

#include "Links/NameSpaces.h"

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
    Begin(path, nullptr);
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

void PathResolver::Begin(std::string path, VokPathCache::SpecialChildren* waiting) {
    if (path.front() != '|') ThrowException("Unrecognised path format: " + path);
    const std::size_t end = SegmentEnd(path, 1);
    walks.push_back({std::move(path), 1, end, cache.GetRoot(), 0, waiting});
}

PathResolver::Outcome PathResolver::Advance(Walk& walk) {
    while (walk.begin <= walk.path.size()) {
        VokObj* child = cache.FindChild(*walk.current, walk.Segment());
        // A path never stops at an instance, nor passes through it, by the instance's own name.
        if (child == nullptr || child->IsExactly(VokInstance::TypeId())) {
            VokPathCache::SpecialChildren& special = cache.GetSpecialChildren(*walk.current);
            child = cache.FindInScenes(special, walk.Segment(), walk.scenesTried);
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
    walk.scenesTried = 0;
    // A run of bars parts two segments as one does, so that only the first segment can be empty.
    walk.begin = walk.path.find_first_not_of('|', walk.end);
    if (walk.begin == std::string::npos)
        walk.begin = walk.path.size() + 1;
    else
        walk.end = SegmentEnd(walk.path, walk.begin);
}

void PathResolver::ResolveNextInstance(VokPathCache::SpecialChildren& special) {
    if (special.resolving) ThrowNoScene();
    std::string path = special.instances[special.resolved]->target.GetPath().GetText();
    if (path.empty()) ThrowNoScene();
    Begin(std::move(path), &special);
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
