#include <VoktRigbake/Stages/VoktRigbake.h>

#include <QelTools/Exception.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokWorld.h>
#include <VoktFramework/Atoms/VoktAtomBiff.h>
#include <VoktFramework/Atoms/VoktAtomJointList.h>
#include <VoktFramework/Atoms/VoktUniverse.h>
#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <VoktRigbake/Procedural/BuildProceduralJoints.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>
#include <VoktRigbake/Skeleton/BuildSkeleton.h>

#include <memory>

namespace {

constexpr const char* kVerboseSkeletonFlag = "-verboseSkeleton";
constexpr const char* kOutputDrivenKeysFlag = "-outputDrivenKeys";
constexpr const char* kOutputJointConstraintsFlag = "-outputJointConstraints";
constexpr const char* kDebugDependenciesFlag = "-debugDependencies";

/// Only these two texts are false, letter case included.
bool IsOn(const std::string& value) {
    return value != "0" && value != "false";
}

}  // namespace

VoktRigbake::VoktRigbake(const VoktObjFilter* objectFilter, std::uint32_t use)
    : VoktOneWorldComponent(objectFilter), skeletonUse(use) {
    VoktErrorHandler::Get().Register(VoktErrorId::NoSkeleton);
}

void VoktRigbake::AddFlags(VoktCommandLineSyntax& syntax) {
    syntax.AddFlag(kVerboseSkeletonFlag, "-vs", "Verbose mode for skeleton export");
    syntax.AddFlag(kOutputDrivenKeysFlag, "-odk", "Output driven keys (default = true)");
    syntax.AddFlagArgument(VoktArgumentType::Boolean, "", "", true, "true");
    syntax.AddFlag(kOutputJointConstraintsFlag, "-ojc",
                   "Output joint constraints (default = false)");
    syntax.AddFlagArgument(VoktArgumentType::Boolean, "", "", true, "false");
    syntax.AddFlag(kDebugDependenciesFlag, "", "Debug dependencies");
    VoktOneWorldComponent::AddFlags(syntax);
}

void VoktRigbake::ReadFlags(const VoktCommandLineSyntax& syntax) {
    ReadValueFlags(syntax, {kOutputDrivenKeysFlag, kOutputJointConstraintsFlag});
    ReadSwitchFlags(syntax, {kVerboseSkeletonFlag, kDebugDependenciesFlag});
    VoktOneWorldComponent::ReadFlags(syntax);
}

void VoktRigbake::SetFlag(const std::string& name, const std::string& value) {
    if (name == kVerboseSkeletonFlag)
        verboseSkeleton = true;
    else if (name == kDebugDependenciesFlag)
        procedural.debugDependencies = true;
    else if (name == kOutputDrivenKeysFlag)
        procedural.drivenKeys = IsOn(value);
    else if (name == kOutputJointConstraintsFlag)
        procedural.jointConstraints = IsOn(value);
    else
        throw VoktError(VoktErrorId::UnhandledArgument, name);
}

void VoktRigbake::Process(VoktUniverse& universe) {
    VokWorld& world = GetWorld(universe);
    const auto* roots = universe.FetchByTypeAndName<VoktAtomJointList>("roots");
    if (roots == nullptr)
        QelTools::Common::ThrowException("VoktRigbake couldn't find root joints atom");

    auto atom = std::make_unique<VoktAtomBiff>();
    Biff::CBlock& block = atom->block;
    universe.Add(std::move(atom), "skeleton");

    const std::unique_ptr<SkeletonData> skeleton =
        BuildSkeleton(world, roots->joints, verboseSkeleton, filter);
    if (skeleton == nullptr) throw VoktError(VoktErrorId::NoSkeleton);
    const std::unique_ptr<ProceduralJoints> joints =
        BuildProceduralJoints(procedural, world, *skeleton);
    if (!WriteSkeleton(*skeleton, block, joints.get(), skeletonUse))
        ThrowVokException("Error while writing skeleton\n");
}
