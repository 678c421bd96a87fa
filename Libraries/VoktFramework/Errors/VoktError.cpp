#include <VoktFramework/Errors/VoktError.h>

#include <utility>

VoktError::VoktError(int errorId) : VokException(""), id(errorId) {}

VoktError::VoktError(int errorId, std::string cause)
    : VokException(""), id(errorId), causeMessage(std::move(cause)) {}

VoktError::VoktError(const VokException& caught, int errorId) : VokException(caught), id(errorId) {}

VoktError::VoktError(const QelTools::Common::Exception& caught, int errorId)
    : VokException(caught), id(errorId) {}
