#include "Document/ParserPlace.h"

#include <libxml/parser.h>

#include <cstddef>

TextPlace PlaceOf(const _xmlParserCtxt& parser) {
    if (parser.input == nullptr) return {};
    return {parser.input->line, parser.input->col};
}

TextPlace PlaceBehindInput(const _xmlParserCtxt& parser) {
    if (parser.input == nullptr) return {};
    const xmlChar* const unread = parser.input->cur;
    return PlaceOf(parser).Behind({reinterpret_cast<const char*>(unread),
                                   static_cast<std::size_t>(parser.input->end - unread)});
}
