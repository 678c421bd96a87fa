#pragma once

#include <VokLib/Base/VokException.h>
#include <VoktFramework/Errors/VoktErrorId.h>

#include <string>
#include <utility>

/// A failure as the tool reports it: its number, and an optional cause. Tools with numbers of their
/// own register them with VoktErrorHandler.
class VoktError : public VokException {
  public:
    /// Ids from here up are warnings; all below are errors.
    static constexpr int kFirstWarning = 10000;

    explicit VoktError(int errorId);
    VoktError(int errorId, std::string cause);
    explicit VoktError(VoktErrorId errorId) : VoktError(static_cast<int>(errorId)) {}
    VoktError(VoktErrorId errorId, std::string cause)
        : VoktError(static_cast<int>(errorId), std::move(cause)) {}
    /// Keeps the message, the position and the cause object of what was caught.
    VoktError(const VokException& caught, int errorId);
    VoktError(const QelTools::Common::Exception& caught, int errorId);
    VoktError(const VokException& caught, VoktErrorId errorId)
        : VoktError(caught, static_cast<int>(errorId)) {}
    VoktError(const QelTools::Common::Exception& caught, VoktErrorId errorId)
        : VoktError(caught, static_cast<int>(errorId)) {}

    int GetId() const { return id; }
    const std::string& GetCauseMessage() const { return causeMessage; }
    bool IsWarning() const { return id >= kFirstWarning; }

  private:
    int id;
    std::string causeMessage;
};
