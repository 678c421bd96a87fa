#include "Tree.h"

#include "FailureText.h"
#include "LoadDocument.h"

#include <VokLib/Tree/VokFactory.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <iostream>

namespace {

constexpr std::size_t kIndent = 2;
/// Deeper lines tell their level in place of further blanks, which would be most of the output.
constexpr std::size_t kMostLevelsIndented = 64;

std::string Indentation(std::size_t level) {
    const std::string blanks(kIndent * std::min(level, kMostLevelsIndented), ' ');
    return level <= kMostLevelsIndented ? blanks : blanks + "[" + std::to_string(level) + "] ";
}

std::string Label(const VokObj& object, const VokWorld& world, const std::string& path) {
    const std::string type(object.GetElementName());
    if (&object == &world) return type + " " + path;
    if (&object == world.GetHierarchy()) return type + " (hierarchy)";
    if (object.GetName().empty()) return type + " (no name)";
    return type + " " + ReadableText(object.GetName());
}

}  // namespace

std::vector<std::string> KnownTypes() {
    const std::vector<std::string_view> names = VokFactory::GetNames();
    std::vector<std::string> types(names.begin(), names.end());
    types.emplace_back(VokWorld::kElementName);
    std::sort(types.begin(), types.end());
    return types;
}

void PrintTree(const std::string& path, const TreeOptions& options) {
    VokWorld world;
    LoadDocument(world, path);
    const auto isWanted = [&options](const VokObj& object) {
        return options.types.empty() || std::find(options.types.begin(), options.types.end(),
                                                  object.GetElementName()) != options.types.end();
    };
    std::vector<std::size_t> shownAbove;  // the depths of the shown objects above the current one
    for (VokItHierarchy it(&world); !it.AtEnd() && std::cout; it.Next()) {
        const std::size_t depth = it.GetDepth();
        if (options.depth && depth >= static_cast<std::size_t>(*options.depth)) it.SkipChildren();
        while (!shownAbove.empty() && shownAbove.back() >= depth) shownAbove.pop_back();
        if (!isWanted(*it.Current())) continue;
        std::cout << Indentation(shownAbove.size()) << Label(*it.Current(), world, path) << '\n';
        shownAbove.push_back(depth);
    }
}
