#pragma once

#include <VokLib/Base/VokException.h>

#include <string>

/// A failure as the tool reports it: an id of the catalogue that VoktErrorHandler holds, and an
/// optional cause.
class VoktError : public VokException {
  public:
    /// Ids from here up are warnings; all below are errors.
    static constexpr int kFirstWarning = 10000;

    explicit VoktError(int errorId);
    VoktError(int errorId, std::string cause);
    /// Keeps the message, the position and the cause object of what was caught.
    VoktError(const VokException& caught, int errorId);
    VoktError(const QelTools::Common::Exception& caught, int errorId);

    int GetId() const { return id; }
    const std::string& GetCauseMessage() const { return causeMessage; }
    bool IsWarning() const { return id >= kFirstWarning; }

  private:
    int id;
    std::string causeMessage;
};
