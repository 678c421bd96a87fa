#pragma once

#include <VoktFramework/Stages/VoktComponent.h>

#include <optional>
#include <string>
#include <vector>

/// The stage that brings the hash registry up for the stages behind it. Its destructor brings the
/// registry down again, which may throw.
class VoktHashClient : public VoktComponent {
  public:
    VoktHashClient();
    ~VoktHashClient() noexcept(false) override;

    /// Throws a QelTools::Common::Exception when a proxy is configured and cannot be reached.
    void Process(VoktUniverse& universe) override;

    /// The file to which the registry's debug log of this run goes, if there is one.
    static std::optional<std::string> GetLogFile();
    static std::vector<std::string> GetDatabaseFiles();

  private:
    bool initialised = false;
};
