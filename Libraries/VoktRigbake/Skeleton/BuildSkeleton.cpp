#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include "Skeleton/JointOrder.h"
#include "Skeleton/LocalTransforms.h"
#include "Skeleton/LodSets.h"

#include <HashClient/QelHashClientUtil.h>
#include <QelTools/AsciiText.h>
#include <QelTools/KeyedHash.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <iostream>
#include <string>
#include <unordered_set>

namespace {

constexpr const char* kHashCategory = "joint";

/// Appends joints one by one, in index order, and ties each to its parent and siblings.
class JointList {
  public:
    explicit JointList(SkeletonData& target) : skeleton(target) {}

    void Add(const VokJoint& joint, std::int32_t parent) {
        auto entry = std::make_unique<SkeletonJoint>();
        entry->joint = &joint;
        entry->nameHash = HashName(joint);
        entry->index = static_cast<std::int32_t>(skeleton.joints.size());
        entry->parent = parent;
        if (parent != -1) LinkToParent(parent, entry->index);
        skeleton.joints.push_back(std::move(entry));
        lastChildren.push_back(-1);
    }

  private:
    /// Checks the joint's name without its namespaces, and reports it to the hash registry.
    std::uint32_t HashName(const VokJoint& joint) {
        const std::string name = joint.GetBaseName();
        if (name.size() > kMaxJointNameLength)
            ThrowVokException("ERROR: Can't handle joint names that are longer than " +
                              std::to_string(kMaxJointNameLength) + " characters");
        const std::string lowerCase = QelTools::Common::ToLowerAscii(name);
        if (!names.insert(lowerCase).second)
            ThrowVokException("ERROR: Duplicate joint name found in skeleton ('" + lowerCase +
                              "')");
        return QelHashClientUtil::AddString(kHashCategory, lowerCase.c_str());
    }

    void LinkToParent(std::int32_t parent, std::int32_t child) {
        std::int32_t& last = lastChildren[static_cast<std::size_t>(parent)];
        if (last == -1)
            skeleton.joints[static_cast<std::size_t>(parent)]->firstChild = child;
        else
            skeleton.joints[static_cast<std::size_t>(last)]->nextSibling = child;
        last = child;
    }

    SkeletonData& skeleton;
    std::unordered_set<std::string, QelTools::Common::KeyedHash> names;
    std::vector<std::int32_t> lastChildren;  // for each joint of the list
};

void PrintOrder(const std::vector<FoundJoint>& joints) {
    for (std::size_t i = 0; i < joints.size(); ++i)
        std::cout << i << "::: " << joints[i].index << ", " << joints[i].joint->GetName()
                  << std::endl;
}

void PrintJoint(const FoundJoint& found, std::int32_t parent) {
    std::cout << found.index << ":\t" << found.joint->GetName() << ",\tdepth: " << found.depth
              << ", parent: " << parent << ", lodLevel: " << found.lodLevel << std::endl;
}

void FillList(const std::vector<FoundJoint>& joints, bool verbose, SkeletonData& skeleton) {
    std::vector<const FoundJoint*> byIndex(joints.size());
    skeleton.index.Reserve(joints.size());
    for (const FoundJoint& found : joints) {
        skeleton.index.Add(*found.joint, found.index);
        byIndex[static_cast<std::size_t>(found.index)] = &found;
    }
    JointList list(skeleton);
    for (const FoundJoint* found : byIndex) {
        // A parent that the filter left out has no index, as if there were none.
        const std::int32_t parentIndex = skeleton.index.Find(found->parent);
        if (verbose) PrintJoint(*found, parentIndex);
        if (parentIndex >= found->index)
            ThrowVokException("Joint comes before parent joint in hierarchy");
        list.Add(*found->joint, parentIndex);
    }
}

}  // namespace

std::unique_ptr<SkeletonData> BuildSkeleton(const VokWorld& world,
                                            const std::vector<VokJoint*>& roots, bool verbose,
                                            const VoktObjFilter* filter) {
    if (roots.empty()) return nullptr;
    auto skeleton = std::make_unique<SkeletonData>();
    skeleton->roots = roots;
    const LodSets lodSets(world, roots);
    std::vector<FoundJoint> joints = FindJoints(roots, filter, lodSets);
    NumberJoints(joints);
    if (verbose) PrintOrder(joints);
    FillList(joints, verbose, *skeleton);
    skeleton->lodCounts = lodSets.CountMembers();
    FillLocalTransforms(world, *skeleton);
    skeleton->signature = ComputeSkeletonSignature(*skeleton);
    return skeleton;
}
