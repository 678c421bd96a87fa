#pragma once

#include "Links/VokPathCache.h"

#include <optional>
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
    /// Where in a path the name of an object ends.
    struct NameEnd {
        const VokObj* object;
        std::size_t at;
    };
    struct Walk {
        std::string path;
        VokPathCache::SpecialChildren* waiting;  // who is to learn the result; may be null
        VokObj* current;
        std::size_t begin = 1;  // of the segment in hand; past the end behind the last one
        std::size_t end = 0;
        std::optional<std::size_t> hash{};  // of the segment in hand, if it was needed
        bool noChild = false;               // the segment in hand is no child to go on by
        std::size_t scenesTried = 0;        // for the segment in hand
        std::vector<NameEnd> names{};       // of the objects whose path this is, from the top
        std::size_t namesPassed = 0;

        std::string_view Segment() const {
            return std::string_view(path).substr(begin, end - begin);
        }
        SoughtName Sought() { return {Segment(), hash}; }
    };
    enum class Outcome { Arrived, NotFound, AnotherFirst };

    void BeginAtRoot(Walk walk);
    void BeginText(std::string path, VokPathCache::SpecialChildren* waiting);
    void BeginObject(const VokObj& object, VokPathCache::SpecialChildren* waiting);
    Outcome Advance(Walk& walk);
    void StepTo(Walk& walk, VokObj* object);
    void NoteNamesPassed(Walk& walk);
    void ResolveNextInstance(VokPathCache::SpecialChildren& special);
    static void AcceptScene(VokPathCache::SpecialChildren& special, VokObj* target);
    VokReference* FindReference(const Walk& walk);

    VokPathCache& cache;
    std::vector<Walk> walks;
};
