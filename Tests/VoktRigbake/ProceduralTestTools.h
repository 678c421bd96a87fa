#pragma once

#include "VoktRigbake/RigbakeTestTools.h"

#include <BiffLib/CBlock.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>
#include <VoktRigbake/File/WriteSkeleton.h>
#include <VoktRigbake/Procedural/BuildProceduralJoints.h>
#include <VoktRigbake/Procedural/ProceduralJoints.h>
#include <VoktRigbake/Stages/VoktRigbake.h>

#include <memory>
#include <stdexcept>
#include <string>

/// A scene with one skeleton, and what the skeleton stage makes of it.
class RigScene {
  public:
    explicit RigScene(std::string_view body, const std::string& root = "root")
        : scene(body), skeleton(scene.Build({root})), index(skeleton->index) {}

    RigScene& WithConstraints() { return Set("-outputJointConstraints", "true"); }
    RigScene& WithoutDrivenKeys() { return Set("-outputDrivenKeys", "false"); }
    RigScene& Debugging() { return Set("-debugDependencies", ""); }

    VokWorld& World() { return scene.World(); }
    /// The first object of this name and exactly this type.
    template <class T>
    T& Get(std::string_view name) {
        VokItHierarchy it(&scene.World(), VokItHierarchy::Kind::DepthFirst, T::TypeId());
        for (; !it.AtEnd(); it.Next())
            if (it.Current()->GetName() == name) return *static_cast<T*>(it.Current());
        throw std::runtime_error("no object named " + std::string(name));
    }

    std::unique_ptr<ProceduralJoints> Build() {
        return BuildProceduralJoints(stage.GetProceduralOptions(), scene.World(), *skeleton);
    }
    /// The whole file.
    std::string Bytes(bool bigEndian, const std::string& fault = "") {
        const std::unique_ptr<ProceduralJoints> procedural = Build();
        Biff::CBlock block;
        WriteSkeleton(*skeleton, block, procedural.get());
        return WriteBytes(block, bigEndian ? Biff::kBigEndian : Biff::kLittleEndian, fault);
    }
    std::string Failure() {
        return FailureText([this] { Bytes(false); });
    }

  private:
    RigScene& Set(const std::string& flag, const std::string& value) {
        stage.SetFlag(flag, value);
        return *this;
    }

    VoktErrorHandler errors;
    TestScene scene;

  public:
    const std::unique_ptr<SkeletonData> skeleton;
    const SkeletonIndex& index;
    VoktRigbake stage{nullptr, kSkeletonForAnimation};
};

/// The kinds of the items, "D" for driven keys and "C" for constraints, in order; empty for null.
std::string KindsOf(const ProceduralJoints* procedural);

/// An anim with one driven QELCurve channel of two keys that gives 1 + 2 d over inputs 0 to 1.
std::string DrivenAnim(const std::string& target, const std::string& channel,
                       const std::string& inputObject, const std::string& inputChannel);

/// A constraint element that needs no elements of its own but targets.
std::string Constraint(const std::string& type, const std::string& name,
                       const std::string& constrained, const std::vector<std::string>& targets,
                       const std::string& contents = "");
