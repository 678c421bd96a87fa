#include "Header.h"

#include "Description.h"
#include "FailureText.h"
#include "LoadDocument.h"

#include <HashClient/QelHashClientUtil.h>
#include <Platform/Folders.h>
#include <QelTools/AsciiText.h>
#include <VokLib/Base/VokException.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include <cctype>
#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <set>

namespace {

/// The registry of hashes, for as long as a skeleton is built.
class HashRegistry {
  public:
    HashRegistry() { QelHashClientUtil::Initialise(); }
    ~HashRegistry() {
        try {
            QelHashClientUtil::Shutdown();
        } catch (const std::exception&) {
            // The hashes are there.
        }
    }
    HashRegistry(const HashRegistry&) = delete;
    HashRegistry& operator=(const HashRegistry&) = delete;
};

std::vector<VokJoint*> FindRoots(const VokWorld& world, bool hasMultipleRoots) {
    std::vector<VokJoint*> roots;
    VokItHierarchy it(world.GetHierarchy(), VokItHierarchy::Kind::DepthFirst, VokJoint::TypeId());
    while (!it.AtEnd() && (hasMultipleRoots || roots.empty())) {
        roots.push_back(static_cast<VokJoint*>(it.Current()));
        it.SkipChildren();
        it.Next();
    }
    return roots;
}

/// No joint is found by the hashes that stand for none.
std::optional<std::uint32_t> RecordedHash(std::uint32_t hash) {
    if (hash == 0 || hash == 0xFFFFFFFFu) return std::nullopt;
    return hash;
}

HeaderContents FromScene(const HeaderOptions& options) {
    VokWorld world;
    LoadDocument(world, options.in);
    const std::vector<VokJoint*> roots = FindRoots(world, options.hasMultipleRoots);
    if (roots.empty()) throw DocumentFailure({options.in}, "There are no joints in the hierarchy");
    HeaderContents contents;
    try {
        const HashRegistry registry;
        const std::unique_ptr<SkeletonData> skeleton = BuildSkeleton(world, roots, false, nullptr);
        contents.signature = skeleton->signature;
        for (const auto& joint : skeleton->joints)
            contents.joints.push_back({ReadableText(joint->joint->GetBaseName()),
                                       RecordedHash(joint->nameHash), joint->parent});
    } catch (const VokException& failure) {
        const FailurePlace place{.file = options.in, .object = failure.GetCauseObject()};
        throw DocumentFailure(place, failure.what());
    } catch (const std::exception& failure) {
        throw DocumentFailure({options.in}, WordsOf(failure));
    }
    return contents;
}

HeaderContents FromFile(const HeaderOptions& options) {
    const SkeletonFile file = SkeletonFile::Load(options.in);
    const Description::Skeleton skeleton = Description::Describe(file, Names::Load(options.names));
    HeaderContents contents;
    contents.signature = skeleton.signature;
    for (const Description::Joint& joint : skeleton.joints)
        contents.joints.push_back({joint.name, joint.hash, joint.parent});
    return contents;
}

/// What a joint is called in C: letters, digits and underscores, once each.
class Identifiers {
  public:
    std::string Make(const HeaderJoint& joint, std::size_t index) {
        std::string wanted;
        if (joint.name && !joint.name->empty())
            for (const char c : *joint.name) {
                const auto byte = static_cast<unsigned char>(c);
                const bool isKept = byte < 0x80 && std::isalnum(byte) != 0;
                wanted += isKept ? static_cast<char>(std::toupper(byte)) : '_';
            }
        else
            wanted = joint.hash ? "JOINT_" + Description::HashText(*joint.hash).substr(2)
                                : "JOINT_" + std::to_string(index);
        std::string name = wanted;
        // None below the last one given is free again.
        int& number = numbers.try_emplace(wanted, 2).first->second;
        while (!taken.insert(name).second) name = wanted + "_" + std::to_string(number++);
        return name;
    }

  private:
    std::set<std::string> taken;
    std::map<std::string, int> numbers;  // of each wanted one the next that may be free
};

}  // namespace

bool HoldsSkeleton(const std::string& path) {
    if (Platform::Exists(path) && !Platform::IsRegularFile(path) && !Platform::IsFolder(path))
        throw DocumentFailure({path},
                              "This is no regular file; it would have to be read twice, for a "
                              "scene and a skeleton file are told apart by their contents");
    return LooksLikeSkeleton(path);
}

void PrintHeader(const HeaderOptions& options, bool isFile, std::ostream& out) {
    PrintHeader(isFile ? FromFile(options) : FromScene(options), options.prefix, out);
}

void PrintHeader(const HeaderContents& contents, const std::string& prefix, std::ostream& out) {
    const std::string guard = prefix + "_SKELETON_CONSTANTS_H";
    out << "/* The joints of a skeleton, made by skel header. Indices and parents are those of the "
           "file; -1 is no parent. */\n#ifndef "
        << guard << "\n#define " << guard << "\n\n#define " << prefix << "_SIGNATURE "
        << Description::HashText(contents.signature) << "u\n#define " << prefix << "_JOINT_COUNT "
        << contents.joints.size() << "\n";
    Identifiers identifiers;
    for (std::size_t i = 0; i < contents.joints.size(); ++i) {
        const HeaderJoint& joint = contents.joints[i];
        const std::string name = identifiers.Make(joint, i);
        out << "\n#define " << prefix << "_INDEX_" << name << ' ' << i << '\n';
        if (joint.hash)
            out << "#define " << prefix << "_HASH_" << name << ' '
                << Description::HashText(*joint.hash) << "u\n";
        out << "#define " << prefix << "_PARENT_" << name << ' ';
        if (joint.parent < 0)
            out << "(-1)\n";
        else
            out << joint.parent << '\n';
    }
    // Included twice it stays silent; behind another skeleton's it must not vanish without a word.
    out << "\n#elif " << prefix << "_SIGNATURE != " << Description::HashText(contents.signature)
        << "u\n#error \"Two skeletons have the prefix " << prefix
        << ": give each its own, skel header --prefix\"\n#endif\n";
}
