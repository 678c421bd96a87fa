#include <QelTools/Exception.h>

#include <utility>

namespace QelTools::Common {

Exception::Exception(std::string messageText) : message(std::move(messageText)) {}

Exception::Exception(const char* messageText) : message(messageText) {}

Exception::Exception(std::string messageText, const SourcePlace& place)
    : message(std::move(messageText)) {
    SetPlace(place);
}

void Exception::SetPlace(const SourcePlace& place) {
    file = RepositoryPath(place);
    line = std::to_string(place.line);
}

TextException::TextException(std::string messageText) : message(std::move(messageText)) {}

void ThrowException(std::string message, const SourcePlace& place) {
    throw Exception(std::move(message), place);
}

void ThrowInternalError(const SourcePlace& place) {
    ThrowException(kInternalErrorText, place);
}

}  // namespace QelTools::Common
