#include <VokLib/Base/VokException.h>

#include <utility>

VokException::VokException(std::string messageText, std::string causePath)
    : Exception(std::move(messageText)), causeObject(std::move(causePath)) {}

VokException::VokException(std::string messageText, std::string causePath,
                           const QelTools::Common::SourcePlace& place)
    : Exception(std::move(messageText), place), causeObject(std::move(causePath)) {}

VokException::VokException(const QelTools::Common::Exception& other) : Exception(other) {}

void ThrowVokException(std::string message, const QelTools::Common::SourcePlace& place) {
    throw VokException(std::move(message), {}, place);
}
