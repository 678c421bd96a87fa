#include "House/TestNames.h"

#include <algorithm>
#include <map>

namespace {

constexpr const char* kTestEnd = "Test";

using NamesOfFolder = std::map<std::string, std::set<std::string>>;

bool StartsWith(const std::string& text, const std::string& start) {
    return text.rfind(start, 0) == 0;
}

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// "a/b/C.cpp" apart: "a/b" and "C.cpp".
std::pair<std::string, std::string> Apart(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {"", path};
    return {path.substr(0, slash), path.substr(slash + 1)};
}

/// The name without its ending, and without the platform that a source is for.
std::string ThingName(const std::string& name) {
    std::string thing = name.substr(0, name.rfind('.'));
    for (const std::string platform : {"_posix", "_win32"})
        if (EndsWith(thing, platform)) thing.resize(thing.size() - platform.size());
    return thing;
}

bool IsTest(const std::string& path) {
    return StartsWith(path, "Tests/") && EndsWith(path, ".cpp") &&
           EndsWith(ThingName(path), kTestEnd);
}

/// A test may be there once for all platforms, or once for each.
bool HasTest(const std::set<std::string>& paths, const std::string& test) {
    for (const char* end : {".cpp", "_posix.cpp", "_win32.cpp"})
        if (paths.count("Tests/" + test + end) != 0) return true;
    return false;
}

/// "skeleton_read" as tests name it: "SkeletonRead".
std::string InCapitals(const std::string& name) {
    std::string capitals;
    bool isStart = true;
    for (const char c : name) {
        if (c != '_') capitals += isStart && c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
        isStart = c == '_';
    }
    return capitals;
}

/// The folder below `Tests` that mirrors a header's or a source's folder; empty for none.
std::string MirrorOf(const std::string& folder) {
    for (const std::string top : {"Libraries/Include/", "Libraries/"})
        if (StartsWith(folder, top)) return folder.substr(top.size());
    if (folder == "Runtime/skeleton") return "Runtime";
    if (folder == "Fuzz/Support") return "Fuzz";
    if (folder == "Tests/House" || folder == "Tests/Support") return folder.substr(6);
    return "";
}

/// The things of each test folder.
NamesOfFolder FindThings(const std::set<std::string>& paths) {
    NamesOfFolder things;
    for (const char* whole : {"EndToEnd", "Faults"}) things[whole].insert("Programs");
    for (const std::string& path : paths) {
        const auto [folder, name] = Apart(path);
        if (StartsWith(folder, "Standalone/")) {
            const std::string program = Apart(folder).second;
            for (const std::string& whole :
                 {std::string("EndToEnd"), std::string("Faults"), program})
                things[whole].insert(program);
            things[program].insert(ThingName(name));
        }
        if (IsTest(path) || MirrorOf(folder).empty()) continue;
        things[MirrorOf(folder)].insert(StartsWith(folder, "Runtime/") ? InCapitals(ThingName(name))
                                                                       : ThingName(name));
    }
    return things;
}

/// The longest of `names` that `text` begins with; empty for none.
std::string LongestStart(const std::string& text, const std::set<std::string>& names) {
    std::string longest;
    for (const std::string& name : names)
        if (StartsWith(text, name) && name.size() > longest.size()) longest = name;
    return longest;
}

/// Whether one of `things` is what the name of a source begins with.
bool HasOwnTest(const std::string& source, const NamesOfFolder& tested) {
    const auto [folder, name] = Apart(source);
    const auto found = tested.find(folder);
    return found != tested.end() && !LongestStart(name, found->second).empty();
}

/// The sources of libraries by their paths below `Libraries`, without platform and ending.
std::set<std::string> FindSources(const std::set<std::string>& paths) {
    std::set<std::string> sources;
    for (const std::string& path : paths) {
        const auto [folder, name] = Apart(path);
        const bool isSource = StartsWith(folder, "Libraries/") && EndsWith(name, ".cpp");
        if (isSource) sources.insert(MirrorOf(folder) + "/" + ThingName(name));
    }
    return sources;
}

}  // namespace

std::vector<std::string> TestNameFaults(const std::set<std::string>& paths,
                                        const std::vector<HeldElsewhere>& elsewhere) {
    std::vector<std::string> faults;
    const NamesOfFolder things = FindThings(paths);
    NamesOfFolder tested;
    for (const std::string& path : paths) {
        if (!IsTest(path)) continue;
        const auto [folder, name] = Apart(path.substr(std::string("Tests/").size()));
        const auto found = things.find(folder);
        const std::string thing =
            found == things.end() ? "" : LongestStart(ThingName(name), found->second);
        if (thing.empty())
            faults.push_back(path + ": its name begins with the name of no header or source of " +
                             folder);
        else
            tested[folder].insert(thing);
    }

    const std::set<std::string> sources = FindSources(paths);
    std::set<std::string> listed;
    for (const HeldElsewhere& entry : elsewhere) {
        if (!HasTest(paths, entry.test))
            faults.push_back("the list names " + entry.test + ", but there is no such test");
        for (const std::string& source : entry.sources) {
            listed.insert(source);
            if (sources.count(source) == 0)
                faults.push_back("the list names " + source + ", but there is no such source");
            else if (HasOwnTest(source, tested))
                faults.push_back("the list names " + source + ", but it has a test of its own");
        }
    }
    for (const std::string& source : sources)
        if (listed.count(source) == 0 && !HasOwnTest(source, tested))
            faults.push_back(source + ".cpp has no test: add Tests/" + source +
                             "Test.cpp, or name the test that holds it in "
                             "Tests/House/SourcesHeldElsewhere.cpp");
    return faults;
}
