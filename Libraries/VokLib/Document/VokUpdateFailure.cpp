#include <VokLib/Document/VokUpdateFailure.h>

#include <utility>

VokUpdateFailure::VokUpdateFailure(std::string text, std::string stylesheetMessages,
                                   const QelTools::Common::SourcePlace& place)
    : Exception(std::move(text), place), messages(std::move(stylesheetMessages)) {}

void ThrowUpdateFailure(std::string text, std::string stylesheetMessages,
                        const QelTools::Common::SourcePlace& place) {
    throw VokUpdateFailure(std::move(text), std::move(stylesheetMessages), place);
}
