#include <VokLib/VokException.h>

#include <utility>

namespace {

/// The path of `object`, or none: the failure to be reported matters more than the place that
/// cannot be told.
VokPath FindPath(const VokObj* object) {
    try {
        if (object != nullptr) return VokPath(object);
    } catch (...) {
    }
    return {};
}

}  // namespace

VokException::VokException(const char* messageText, const VokObj* object)
    : Exception(messageText), causeObject(FindPath(object)) {}

VokException::VokException(std::string messageText, const VokObj* object)
    : Exception(std::move(messageText)), causeObject(FindPath(object)) {}

VokException::VokException(std::string messageText, const VokObj* object,
                           const QelTools::Common::SourcePlace& place)
    : Exception(std::move(messageText), place), causeObject(FindPath(object)) {}

VokException::VokException(const QelTools::Common::Exception& other) : Exception(other) {}

void ThrowVokException(std::string message, const VokObj* object,
                       const QelTools::Common::SourcePlace& place) {
    throw VokException(std::move(message), object, place);
}
