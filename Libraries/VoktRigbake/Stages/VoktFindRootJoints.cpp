#include <VoktRigbake/Stages/VoktFindRootJoints.h>

#include <QelTools/Exception.h>
#include <VokLib/Objects/Nodes/VokJoint.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokScene.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktFramework/Atoms/VoktAtomJointList.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>

#include <memory>
#include <vector>

namespace {

constexpr const char* kMultiRootFlag = "-multiRoot";

void FindRoots(const VokWorld& world, const VoktObjFilter* filter, std::vector<VokJoint*>& roots) {
    VokItHierarchy it(world.GetHierarchy(), VokItHierarchy::Kind::DepthFirst, VokJoint::TypeId());
    while (!it.AtEnd()) {
        auto* joint = static_cast<VokJoint*>(it.Current());
        if (filter == nullptr || filter->Accepts(*joint)) roots.push_back(joint);
        it.SkipChildren();
        it.Next();
    }
}

/// A skeleton is placed as one thing, so its roots must stand in one space.
void CheckParents(const std::vector<VokJoint*>& roots) {
    for (const VokJoint* root : roots)
        if (root->GetParent() != roots.front()->GetParent())
            ThrowVokException("Skeletal roots must either all be unparented or share a parent");
}

}  // namespace

VoktFindRootJoints::VoktFindRootJoints(const VoktObjFilter* objectFilter)
    : VoktMultipleWorldComponent(objectFilter) {
    VoktErrorHandler::Get().Register(VoktErrorId::MultipleSkeletons);
}

void VoktFindRootJoints::AddFlags(VoktCommandLineSyntax& syntax) {
    syntax.AddFlag(kMultiRootFlag, "-mr", "Support skeletons with multiple roots");
    VoktMultipleWorldComponent::AddFlags(syntax);
}

void VoktFindRootJoints::ReadFlags(const VoktCommandLineSyntax& syntax) {
    ReadSwitchFlags(syntax, {kMultiRootFlag});
    VoktMultipleWorldComponent::ReadFlags(syntax);
}

void VoktFindRootJoints::SetFlag(const std::string& name, const std::string& /*value*/) {
    if (name != kMultiRootFlag) QelTools::Common::ThrowException("Unhandled argument: " + name);
    multiRoot = true;
}

void VoktFindRootJoints::ProcessWorld(VoktUniverse& universe) {
    auto atom = std::make_unique<VoktAtomJointList>();
    std::vector<VokJoint*>& roots = atom->joints;
    universe.Add(std::move(atom), DecorateAtomName("roots"));
    FindRoots(GetCurrentWorld(), filter, roots);
    if (multiRoot) {
        CheckParents(roots);
    } else if (roots.size() > 1) {
        VoktErrorHandler::Get().Add(VoktError(VoktErrorId::MultipleSkeletons));
        roots.resize(1);
    }
}
