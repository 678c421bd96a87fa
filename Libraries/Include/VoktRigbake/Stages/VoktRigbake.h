#pragma once

#include <VoktFramework/Stages/VoktOneWorldComponent.h>
#include <VoktRigbake/Procedural/BuildProceduralJoints.h>

#include <cstdint>
#include <string>

/// The stage that turns the joints of the run's world into a skeleton: it reads the joint list
/// "roots" and leaves the binary layout "skeleton" for a saving stage.
class VoktRigbake : public VoktOneWorldComponent {
  public:
    /// `objectFilter` may be null; joints that it refuses are left out. `use` is
    /// kSkeletonForAnimation or any other number, which lifts the limit on joints. Registers report
    /// 1100 with the error handler, which must exist.
    VoktRigbake(const VoktObjFilter* objectFilter, std::uint32_t use);

    void AddFlags(VoktCommandLineSyntax& syntax) override;
    void ReadFlags(const VoktCommandLineSyntax& syntax) override;
    /// The two flags with a value are false for exactly "0" and "false" and true for every other
    /// text. Throws VoktError 200 for a name that is none of the four flags.
    void SetFlag(const std::string& name, const std::string& value) override;

    /// Throws VoktError 1100 when there is no joint, a QelTools Exception when no stage has left a
    /// joint list, and what the conversion throws. The atom "skeleton" is in the universe from
    /// early on, even after a failure.
    void Process(VoktUniverse& universe) override;

    const ProceduralOptions& GetProceduralOptions() const { return procedural; }

  private:
    bool verboseSkeleton = false;
    ProceduralOptions procedural;
    std::uint32_t skeletonUse;
};
