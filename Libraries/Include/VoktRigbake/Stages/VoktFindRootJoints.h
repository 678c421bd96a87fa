#pragma once

#include <VoktFramework/Stages/VoktMultipleWorldComponent.h>

#include <string>

/// The stage that decides where skeletons begin: for each world it leaves a joint list "roots" with
/// the joints that no other joint stands above, in pre-order.
class VoktFindRootJoints : public VoktMultipleWorldComponent {
  public:
    /// `objectFilter` may be null; a joint that it refuses is no root and hides the joints beneath
    /// it. Registers warning 10100 with the error handler, which must exist.
    explicit VoktFindRootJoints(const VoktObjFilter* objectFilter);

    void AddFlags(VoktCommandLineSyntax& syntax) override;
    void ReadFlags(const VoktCommandLineSyntax& syntax) override;
    /// Throws a QelTools Exception "Unhandled argument: " and the name for anything but
    /// "-multiRoot".
    void SetFlag(const std::string& name, const std::string& value) override;

    /// Looks under the hierarchy object of the current world; throws "No hierarchy present."
    /// without one. Without -multiRoot only the first root is kept, with warning 10100; with it,
    /// roots under different parents throw "Skeletal roots must either all be unparented or share a
    /// parent". No root at all is no error here.
    void ProcessWorld(VoktUniverse& universe) override;

  private:
    bool multiRoot = false;
};
