#pragma once

#include "Links/VokPathCache.h"

#include <string>
#include <string_view>
#include <vector>

class VokObj;
class VokReference;

/// Follows one path from the root of a tree to an object. Where a name is no child of the object
/// reached, the path goes on through the scenes that the object's instances stand for; their own
/// paths are followed first, on a stack of walks rather than by recursion, for instances can lead
/// through one another without end.
class PathResolver {
  public:
    explicit PathResolver(VokPathCache& pathCache) : cache(pathCache) {}
    PathResolver(const PathResolver&) = delete;
    PathResolver& operator=(const PathResolver&) = delete;
    ~PathResolver();

    /// As VokPath::Resolve. `reference` may be null. One path after another until one throws.
    VokObj* Resolve(const std::string& path, VokReference** reference);

  private:
    struct Walk {
        std::string path;
        std::size_t begin;  // of the segment in hand; past the end behind the last one
        std::size_t end;
        VokObj* current;
        std::size_t scenesTried = 0;                       // for the segment in hand
        VokPathCache::SpecialChildren* waiting = nullptr;  // who is to learn the result

        std::string_view Segment() const {
            return std::string_view(path).substr(begin, end - begin);
        }
    };
    enum class Outcome { Arrived, NotFound, AnotherFirst };

    void Begin(std::string path, VokPathCache::SpecialChildren* waiting);
    Outcome Advance(Walk& walk);
    static void StepTo(Walk& walk, VokObj* object);
    void ResolveNextInstance(VokPathCache::SpecialChildren& special);
    static void AcceptScene(VokPathCache::SpecialChildren& special, VokObj* target);
    VokReference* FindReference(const Walk& walk);

    VokPathCache& cache;
    std::vector<Walk> walks;
};
