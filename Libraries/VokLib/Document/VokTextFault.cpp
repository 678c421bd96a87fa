#include "Document/VokTextFault.h"

TextPlace TextPlace::Behind(std::string_view text) const {
    TextPlace place = *this;
    for (const char c : text) {
        place.line += c == '\n' ? 1 : 0;
        place.column = c == '\n' ? 1 : place.column + 1;
    }
    return place;
}

VokTextFault::VokTextFault(const std::string& text, TextPlace where,
                           const QelTools::Common::SourcePlace& place)
    : VokException(
          text + " Line " + std::to_string(where.line) + " Column " + std::to_string(where.column),
          {}, place),
      textPlace(where) {}

void ThrowTextFault(const std::string& text, TextPlace where,
                    const QelTools::Common::SourcePlace& place) {
    throw VokTextFault(text, where, place);
}
