// Names of files and paths of objects. The first line of an input is a name, the second what it
// counts from; every further one is the path of an object, asked for with and without a memory.

#include "Links/VokPathCache.h"

#include <VokLib/Library/VokLib.h>
#include <VokLib/Links/VokPath.h>
#include <VokLib/Text/VokPathText.h>
#include <VokLib/Tree/VokInstance.h>
#include <VokLib/Tree/VokNode.h>
#include <VokLib/Tree/VokReference.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

[[noreturn]] void Fail(const std::string& what, const std::string& first,
                       const std::string& second) {
    std::fprintf(stderr, "PathTextFuzzer: %s: \"%s\" and \"%s\"\n", what.c_str(), first.c_str(),
                 second.c_str());
    std::abort();
}

/// Nothing where the name is refused, which has to be told in words.
template <class Make>
std::optional<std::string> Attempt(Make make) {
    try {
        return make();
    } catch (const std::exception& failure) {
        if (*failure.what() == '\0') Fail("refused without a word", "", "");
        return std::nullopt;
    }
}

void CheckFileNames(const std::string& name, const std::string& base) {
    using namespace VokPathText;
    const std::string relative = MakeRelativePath(name, base);
    if (!relative.empty() && name.empty()) Fail("a name out of none", name, base);
    Attempt([&] { return MakeAbsolutePath(name, base); });
    const auto tidy = Attempt([&] { return TidyAbsolutePath(name, base); });
    if (!tidy) return;
    const auto again = Attempt([&] { return TidyAbsolutePath(*tidy, *tidy); });
    if (!again || *again != *tidy) Fail("tidied twice", *tidy, again.value_or("nothing"));
}

/// Adds the object that a line "kind name" tells to `parent`, and gives the place of the next.
VokObj* Grow(VokWorld& world, VokObj* parent, const std::string& line) {
    const std::string name = line.substr(1);
    std::unique_ptr<VokObj> object;
    switch (line[0]) {
        case '<':
            return parent->GetParent() == nullptr ? &world : parent->GetParent();
        case '=':
            object = std::make_unique<VokScene>();
            break;
        case '>': {
            auto instance = std::make_unique<VokInstance>();
            instance->target.SetTargetPath(name);
            object = std::move(instance);
            break;
        }
        case '@': {
            auto reference = std::make_unique<VokReference>();
            reference->referenceNamespace = name;
            object = std::move(reference);
            break;
        }
        default:
            object = std::make_unique<VokNode>();
            break;
    }
    object->SetName(name);
    VokObj* const added = object.get();
    parent->AddChild(object.release());
    const bool isOpen = line[0] == '+' || line[0] == '=';
    return isOpen ? added : parent;
}

struct Answer {
    VokObj* object = nullptr;
    VokReference* reference = nullptr;
    std::string failure;
    bool operator==(const Answer&) const = default;
};

Answer Ask(VokWorld& world, const std::string& path, VokPathCache* cache) {
    Answer answer;
    try {
        answer.object = VokPath(path).Resolve(&world, &answer.reference, cache);
    } catch (const std::exception& failure) {
        answer.failure = failure.what();
    }
    return answer;
}

void CheckSameAnswer(VokWorld& world, const std::string& path, VokPathCache& cache) {
    if (!(Ask(world, path, &cache) == Ask(world, path, nullptr)))
        Fail("another answer from memory", path, "");
}

/// True where a path can mean one object alone: every name is there once, none holds the separator,
/// and no object stands for another.
bool IsPlain(const std::vector<std::string>& objects) {
    std::set<std::string> names;
    return std::all_of(objects.begin(), objects.end(), [&](const std::string& line) {
        if (line[0] == '<') return true;
        const std::string name = line.substr(1);
        return line[0] != '>' && line[0] != '@' && !name.empty() &&
               name.find('|') == std::string::npos && names.insert(name).second;
    });
}

void CheckObjectPaths(const std::vector<std::string>& lines) {
    VokWorld world;
    VokObj* place = world.GetHierarchy();
    std::vector<std::string> objects;
    std::vector<std::string> questions;
    for (const std::string& line : lines) {
        if (line.empty()) continue;
        const bool isObject = std::string("<=>@+-").find(line[0]) != std::string::npos;
        if (isObject) place = Grow(world, place, line);
        (isObject ? objects : questions).push_back(line);
    }
    VokPathCache cache(&world);
    for (const std::string& path : questions) CheckSameAnswer(world, path, cache);
    if (place == &world) return;
    const std::string path = VokPath(place).GetText();
    if (!path.starts_with("|")) Fail("no path", path, "");
    CheckSameAnswer(world, path, cache);
    if (IsPlain(objects) && Ask(world, path, nullptr).object != place)
        Fail("an object's own path leads elsewhere", path, Ask(world, path, nullptr).failure);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const VokLib library(true, true, true, true, true);
    std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
    std::vector<std::string> lines;
    for (std::string line; lines.size() < 200 && std::getline(text, line);) lines.push_back(line);
    if (lines.size() < 2) return 0;
    CheckFileNames(lines[0], lines[1]);
    lines.erase(lines.begin(), lines.begin() + 2);
    CheckObjectPaths(lines);
    return 0;
}
