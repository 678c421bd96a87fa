#pragma once

#include <VoktFramework/Stages/VoktComponent.h>

/// The stage that brings the hash registry up for the stages behind it. Its destructor brings the
/// registry down again, which may throw.
class VoktHashClient : public VoktComponent {
  public:
    VoktHashClient();
    ~VoktHashClient() noexcept(false) override;

    /// Throws a QelTools::Common::Exception when a proxy is configured and cannot be reached.
    void Process(VoktUniverse& universe) override;

  private:
    bool initialised = false;
};
