#pragma once

#include <string>
#include <string_view>

class VokObj;
class VokReference;
class VokPathCache;

/// The text form of an object's place in its world: the names from the world's child down to the
/// object, each preceded by "|". The hierarchy scene has an empty name, so a path into it begins
/// with two bars, as in
/// "||root|hips". Names may hold colons: an object from a referenced document is called
/// namespace:name.
class VokPath {
  public:
    VokPath() = default;
    explicit VokPath(std::string pathText);

    /// The path of `object`, as SetFromObject.
    explicit VokPath(const VokObj* object);

    /// Throws a QelTools Exception for a null object ("Cannot set path to null obj"), for the world
    /// itself and for an object that no world holds.
    void SetFromObject(const VokObj* object);

    const std::string& GetText() const { return text; }
    bool IsEmpty() const { return text.empty(); }

    /// The object at this path under `root`, or null. Where the path leads into a document that is
    /// only referenced, `reference` (if given) is set to the reference and the result is null; else
    /// it is set to null. An empty path is null. Throws "Unrecognised path format: " for a path
    /// without a leading bar and "Instance target scene not found" for a broken instance on the
    /// way. `cache` makes many resolutions against one unchanging tree linear.
    VokObj* Resolve(VokObj* root, VokReference** reference = nullptr,
                    VokPathCache* cache = nullptr) const;

  private:
    std::string text;
};
