#include "FileNames.h"

#include "FailureText.h"
#include "Growth.h"

#include <Platform/Paths.h>
#include <QelTools/Exception.h>
#include <VokLib/Text/VokEncoding.h>
#include <VokLib/Text/VokPathText.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

namespace fs = std::filesystem;

namespace {

/// The format takes a name with a colon (a drive, an address) for a complete one.
bool IsComplete(const std::string& name) {
    return name.find(':') != std::string::npos;
}

std::string WithSlashes(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

/// A path's name with slashes alone, where a backslash is no letter of a name.
std::string SlashedName(const fs::path& path) {
    const std::string name = Platform::FromPath(path);
    return Platform::BackslashSeparates() ? WithSlashes(name) : name;
}

/// Not every compiler's library tells the name of a server from that of a folder.
bool NamesServer(const std::string& slashedName) {
    return Platform::BackslashSeparates() && slashedName.starts_with("//");
}

std::string TidyName(const fs::path& path) {
    const std::string name = SlashedName(path);
    if (NamesServer(name)) return WithSlashes(Platform::FullPath(name).value_or(name));
    return SlashedName(path.lexically_normal());
}

struct NameOrder {
    bool operator()(const std::string& a, const std::string& b) const {
        return Platform::CompareNames(a, b) < 0;
    }
};

bool StandInOneFolder(const std::string& a, const std::string& b) {
    const auto folder = [](const std::string& name) {
        return Platform::FromPath(Platform::ToPath(name).parent_path());
    };
    return Platform::CompareNames(folder(a), folder(b)) == 0;
}

/// Rewrites names relative to one document so that they are relative to another. The system's names
/// are UTF-8, those in a document single bytes.
class MoveNames : public VokUpdateDependencies {
  public:
    MoveNames(std::string oldDocument, std::string newDocument, std::size_t mostAdded)
        : from(std::move(oldDocument)), to(std::move(newDocument)), most(mostAdded) {}

    void Translate(std::string& out, const std::string& name, const VokObj* object) override {
        try {
            out = Move(name);
            added += out.size() > name.size() ? out.size() - name.size() : 0;
        } catch (const std::exception& failure) {
            ThrowVokException("The file name \"" + name + "\" cannot be written relative to \"" +
                                  to + "\": " + failure.what(),
                              object);
        }
        if (added > most) throw GrowthBeyondLimit();
    }

    std::size_t GetAdded() const { return added; }

  private:
    std::string Move(const std::string& name) const {
        const std::string system = VokEncoding::ToUtf8(name);
        const std::string absolute = VokPathText::TidyAbsolutePath(system, from);
        // A name that does not depend on the document's place stays as its author wrote it.
        if (LeadsTo(absolute, system)) return name;
        // The common folder is found without regard to letter case, which may hold two for one.
        std::string moved = WithSlashes(VokPathText::MakeRelativePath(absolute, to));
        if (!LeadsTo(absolute, moved)) moved = WithSlashes(absolute);
        if (!LeadsTo(absolute, moved)) ThrowVokException("no name leads there");
        return VokEncoding::ToLatin1(moved);
    }

    bool LeadsTo(const std::string& absolute, const std::string& name) const {
        try {
            return Platform::CompareNames(VokPathText::TidyAbsolutePath(name, to), absolute) == 0;
        } catch (const QelTools::Common::Exception&) {
            return false;  // it climbs out of the root
        }
    }

    std::string from;
    std::string to;
    std::size_t most;
    std::size_t added = 0;  // characters
};

/// Names that are relative to a document are not to be rewritten from a place that is not known.
std::string FullName(const std::string& path, const char* what) {
    if (auto full = Platform::FullPath(path)) return *full;
    throw DocumentFailure({path}, std::string(what) +
                                      "Failed to retrieve current working directory, or its full "
                                      "name is longer than this system's names may be");
}

}  // namespace

std::vector<std::string> DependedFiles(const VokWorld& world, const std::string& typedPath,
                                       std::size_t mostBytes) {
    VokDependencies names;
    CollectDependencies(world, names);
    const std::string document = TidyName(Platform::ToPath(typedPath));
    const fs::path folder = Platform::ToPath(document).parent_path();
    std::set<std::string, NameOrder> known = {document};
    std::vector<std::string> files;
    std::size_t bytes = 0;
    for (const std::string& name : names.GetFiles()) {
        std::string file = WithSlashes(VokEncoding::ToUtf8(name));
        if (!IsComplete(file)) {
            const fs::path path = Platform::ToPath(file);
            file = TidyName(NamesServer(file) ? path : folder / path);
        }
        if (!known.insert(file).second) continue;
        bytes += file.size();
        if (bytes > mostBytes)
            throw DocumentFailure({typedPath},
                                  "The names of its files, with the document's folder in front of "
                                  "them, come to more than " +
                                      std::to_string(mostBytes) + " bytes");
        files.push_back(std::move(file));
    }
    return files;
}

std::size_t MoveDocument(VokWorld& world, const std::string& oldPath, const std::string& newPath,
                         std::size_t mostAdded) {
    const std::string from = FullName(oldPath, "");
    const std::string to = FullName(newPath, "The file cannot be written: ");
    MoveNames names(from, to, mostAdded);
    if (!StandInOneFolder(from, to)) RewriteDependencies(world, names);
    world.SetFilename(to);
    return names.GetAdded();
}
