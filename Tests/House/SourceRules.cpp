#include "House/SourceRules.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace {

constexpr std::size_t kMostLines = 600;

/// What each library may include beside its own headers.
const std::map<std::string, std::set<std::string>>& AllowedLibraries() {
    static const std::map<std::string, std::set<std::string>> allowed = {
        {"QelTools", {}},
        {"Platform", {}},
        {"LateLibraries", {"QelTools", "Platform"}},
        {"BiffLib", {"QelTools", "Platform"}},
        {"HashClient", {"QelTools", "Platform"}},
        {"VokLib", {"QelTools", "Platform"}},
        {"AnimUtil", {"QelTools", "Platform", "VokLib"}},
        {"VoktFramework", {"QelTools", "Platform", "BiffLib", "HashClient", "VokLib", "AnimUtil"}},
        {"VoktRigbake",
         {"QelTools", "Platform", "BiffLib", "HashClient", "VokLib", "AnimUtil", "VoktFramework"}},
    };
    return allowed;
}

using Floors = std::vector<std::vector<std::string>>;

/// The folders inside a library from the ground up: one sees its own floor and those below. Links,
/// tree and document are one floor, for they are the contract of an object: it stands in a tree,
/// is the end of links, and reads and writes itself.
const std::map<std::string, Floors>& FloorsOfFolders() {
    static const std::map<std::string, Floors> floors = {
        {"VokLib",
         {{"Base"},
          {"Text"},
          {"CustomData"},
          {"Links", "Tree", "Document"},
          {"FileNames"},
          {"Update"},
          {"Objects/Nodes"},
          {"Objects/Animation"},
          {"Objects/Constraints"},
          {"Objects/Geometry"},
          {"Objects/Shading"},
          {"Objects/Sets"},
          {"Library"}}},
        {"AnimUtil", {{"LeastSquares"}, {"Animation"}}},
        {"VoktFramework",
         {{"Errors"}, {"Atoms"}, {"CommandLine"}, {"Stages"}, {"Saving"}, {"Tool"}}},
        {"VoktRigbake", {{"Skeleton"}, {"Procedural"}, {"File"}, {"Stages"}}},
    };
    return floors;
}

bool StartsWith(const std::string& text, const std::string& start) {
    return text.rfind(start, 0) == 0;
}

/// The part of a path up to the next separator behind `prefix`; empty when the path starts
/// otherwise or goes no deeper.
std::string FolderBehind(const std::string& path, const std::string& prefix) {
    if (!StartsWith(path, prefix)) return "";
    const std::size_t end = path.find('/', prefix.size());
    return end == std::string::npos ? "" : path.substr(prefix.size(), end - prefix.size());
}

/// The library that a file belongs to; empty for programs and tests.
std::string LibraryOf(const std::string& path) {
    const std::string library = FolderBehind(path, "Libraries/Include/");
    return library.empty() ? FolderBehind(path, "Libraries/") : library;
}

/// The folder of `path` inside `library`, "" at its top.
std::string FolderInLibrary(const std::string& path, const std::string& library) {
    std::string rest = path;
    for (const std::string& top : {"Libraries/Include/" + library, "Libraries/" + library, library})
        if (StartsWith(rest, top + "/")) rest = rest.substr(top.size() + 1);
    const std::size_t end = rest.rfind('/');
    return end == std::string::npos ? "" : rest.substr(0, end);
}

/// The floor of `folder`; the number of floors for a folder that has none.
std::size_t FloorOf(const std::string& folder, const Floors& floors) {
    std::size_t floor = 0;
    while (floor < floors.size() &&
           std::find(floors[floor].begin(), floors[floor].end(), folder) == floors[floor].end())
        ++floor;
    return floor;
}

/// The fault of a folder that looks up inside its own library, or nothing.
std::string FolderFault(const std::string& path, const std::string& header) {
    const std::string library = LibraryOf(path);
    const auto found = FloorsOfFolders().find(library);
    if (found == FloorsOfFolders().end()) return "";
    const Floors& floors = found->second;
    const std::string from = FolderInLibrary(path, library);
    const std::string to = FolderInLibrary(header, library);
    const std::size_t reached = FloorOf(to, floors);
    if (reached == floors.size() || reached <= FloorOf(from, floors)) return "";
    return from + " includes " + header + ", but " + to + " stands above it in " + library;
}

bool MayCallTheSystem(const std::string& path) {
    // The tests of failures load ahead of the C library, count its calls and end processes.
    return LibraryOf(path) == "Platform" || StartsWith(path, "Tests/Platform/") ||
           StartsWith(path, "Tests/Faults/") ||
           (StartsWith(path, "Tests/Support/") && (path.find("_posix.") != std::string::npos ||
                                                   path.find("_win32.") != std::string::npos)) ||
           StartsWith(path, "Tests/FaultShim/");
}

bool IsSystemHeader(const std::string& header) {
    static const std::set<std::string> headers = {
        "unistd.h",    "fcntl.h",   "signal.h",  "csignal",    "spawn.h",  "poll.h",
        "pthread.h",   "dlfcn.h",   "termios.h", "dirent.h",   "pwd.h",    "stdio_ext.h",
        "semaphore.h", "windows.h", "Windows.h", "winsock2.h", "shlobj.h", "shellapi.h",
        "io.h",        "direct.h",  "process.h", "tchar.h",
    };
    static const std::vector<std::string> folders = {"sys/", "linux/", "netinet/", "arpa/"};
    return headers.count(header) > 0 ||
           std::any_of(folders.begin(), folders.end(),
                       [&header](const std::string& folder) { return StartsWith(header, folder); });
}

bool AsksForThePlatform(const std::string& condition) {
    static const std::vector<std::string> macros = {
        "_WIN32", "WIN32", "_WIN64", "_MSC_VER", "__MINGW", "__linux", "__unix", "__APPLE__",
    };
    return std::any_of(macros.begin(), macros.end(), [&condition](const std::string& macro) {
        return condition.find(macro) != std::string::npos;
    });
}

/// A preprocessor line taken apart: "include", "<map>".
struct Directive {
    std::string name;
    std::string rest;
};

Directive DirectiveOf(const std::string& line) {
    std::size_t at = line.find_first_not_of(" \t");
    if (at == std::string::npos || line[at] != '#') return {};
    at = line.find_first_not_of(" \t", at + 1);
    if (at == std::string::npos) return {};
    const std::size_t end = line.find_first_of(" \t<\"", at);
    if (end == std::string::npos) return {line.substr(at), ""};
    return {line.substr(at, end - at), line.substr(end)};
}

/// The name between the quotes or angle brackets of an include.
std::string IncludedName(const std::string& rest) {
    const std::size_t begin = rest.find_first_of("<\"");
    if (begin == std::string::npos) return "";
    const std::size_t end = rest.find_first_of(">\"", begin + 1);
    return end == std::string::npos ? "" : rest.substr(begin + 1, end - begin - 1);
}

/// The programs look things up by what a file says, hashes among it. The library's hash tables are
/// no secret: a file can hold keys that all fall on one place, and each look-up takes all of them.
bool IsHashTable(const std::string& header) {
    return header == "unordered_map" || header == "unordered_set";
}

/// The fault of including `header`, or nothing.
std::string IncludeFault(const std::string& path, const std::string& header) {
    if (StartsWith(path, "Standalone/") && IsHashTable(header))
        return "hash table " + header + ", whose places a file can choose";
    if (!MayCallTheSystem(path) && IsSystemHeader(header))
        return "operating system header " + header;
    const std::string library = LibraryOf(path);
    const std::string included = FolderBehind(header, "");
    if (library.empty()) return "";
    if (included == library || AllowedLibraries().count(included) == 0)
        return FolderFault(path, header);
    if (AllowedLibraries().at(library).count(included) == 0)
        return library + " includes " + header + " from above";
    // The curve fitter is mathematics and knows nothing of scenes.
    if (StartsWith(path, "Libraries/AnimUtil/LeastSquares/") && included == "VokLib")
        return "the curve fitter includes " + header;
    return "";
}

/// Whether a line declares a hash table whose keys a document can choose so that all of them meet.
bool HasKnownHash(const std::string& line) {
    if (line.find("KeyedHash") != std::string::npos) return false;
    for (const std::string table : {"unordered_map<std::", "unordered_set<std::"}) {
        const std::size_t at = line.find(table);
        if (at == std::string::npos) continue;
        const std::string key = line.substr(at + table.size());
        if (StartsWith(key, "string") || StartsWith(key, "uint32_t")) return true;
    }
    return false;
}

std::string LineFault(const std::string& path, const std::string& line) {
    const Directive directive = DirectiveOf(line);
    if (!LibraryOf(path).empty() && HasKnownHash(line)) return "hash table without KeyedHash";
    if (directive.name == "include") return IncludeFault(path, IncludedName(directive.rest));
    const bool isCondition = directive.name == "if" || directive.name == "ifdef" ||
                             directive.name == "ifndef" || directive.name == "elif";
    if (isCondition && !MayCallTheSystem(path) && AsksForThePlatform(directive.rest))
        return "platform conditional" + directive.rest;
    return "";
}

}  // namespace

std::vector<SourceFile> ReadCheckout(const std::string& root) {
    namespace fs = std::filesystem;
    std::vector<SourceFile> files;
    for (const char* top :
         {"Libraries", "Runtime", "Standalone", "Tests", "Fuzz", "Benchmarks", "Examples"}) {
        if (!fs::is_directory(fs::path(root) / top)) continue;
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(root) / top)) {
            const std::string extension = entry.path().extension().string();
            if (!entry.is_regular_file() || (extension != ".cpp" && extension != ".h")) continue;
            std::ostringstream text;
            text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            files.push_back({fs::relative(entry.path(), root).generic_string(), text.str()});
        }
    }
    std::sort(files.begin(), files.end(),
              [](const SourceFile& a, const SourceFile& b) { return a.path < b.path; });
    return files;
}

std::vector<std::string> FaultsOf(const SourceFile& file) {
    std::vector<std::string> faults;
    std::istringstream lines(file.text);
    std::string line;
    std::size_t count = 0;
    for (; std::getline(lines, line); ++count) {
        const std::string fault = LineFault(file.path, line);
        if (!fault.empty()) faults.push_back(file.path + ": " + fault);
    }
    if (count > kMostLines) faults.push_back(file.path + ": " + std::to_string(count) + " lines");
    const std::string library = LibraryOf(file.path);
    if (!library.empty() && AllowedLibraries().count(library) == 0)
        faults.push_back(file.path + ": the library has no floor");
    const auto floors = FloorsOfFolders().find(library);
    if (floors != FloorsOfFolders().end()) {
        const std::string folder = FolderInLibrary(file.path, library);
        if (FloorOf(folder, floors->second) == floors->second.size())
            faults.push_back(file.path + ": the folder \"" + folder + "\" has no floor in " +
                             library);
    }
    return faults;
}
