#pragma once

#include "Document/DocumentFeed.h"
#include "Document/PushParser.h"

#include <VokLib/Base/VokException.h>

#include <libxml/parser.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// Reads a text through the reader's feed and through the parser alone, so that the two can be
/// compared.
namespace ParserComparison {

/// What came out of a parse: the events with joined texts, the error code and the place.
struct Outcome {
    std::string events;
    int code = 0;
    int line = 0;
    int column = 0;
    bool operator==(const Outcome&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << outcome.code << " at " << outcome.line << ":" << outcome.column << " "
               << outcome.events;
}

class Recorder : public ParserEvents {
  public:
    void StartElement(const char* name, const char** attributes) override {
        text += std::string("<") + name;
        for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2)
            text += std::string(" ") + attributes[0] + "=" + attributes[1];
        text += ">";
    }
    void EndElement(const char* name) override { text += std::string("</") + name + ">"; }
    void Characters(const char* bytes, std::size_t length) override { text.append(bytes, length); }

    std::string text;
};

/// Calls `push(bytes, size, last)` for each block between the `cuts` until one returns an error.
template <class Push>
int PushBlocks(std::string_view text, const std::vector<std::size_t>& cuts, Push push) {
    std::size_t at = 0;
    for (std::size_t i = 0; i <= cuts.size(); ++i) {
        const std::size_t end = i < cuts.size() ? cuts[i] : text.size();
        const int code = push(text.data() + at, end - at, i == cuts.size());
        if (code != 0) return code;
        at = end;
    }
    return 0;
}

/// A limit or another refusal of the feed counts as code -1000, with its text among the events.
inline Outcome Feed(std::string_view text, const std::vector<std::size_t>& cuts = {}) {
    Recorder events;
    const std::string name = "test";
    PushParser parser(events, name, false);
    DocumentFeed feed(parser);
    Outcome outcome;
    try {
        outcome.code = PushBlocks(text, cuts, [&](const char* bytes, std::size_t size, bool last) {
            return feed.Feed(bytes, size, last);
        });
    } catch (const VokException& failure) {
        outcome.code = -1000;
        events.text += failure.what();
    }
    outcome.events = events.text;
    outcome.line = parser.GetPlace().line;
    outcome.column = parser.GetPlace().column;
    return outcome;
}

inline Outcome ParserAlone(std::string_view text, const std::vector<std::size_t>& cuts = {}) {
    Recorder events;
    xmlSAXHandler handlers{};
    handlers.startElement = [](void* user, const xmlChar* name, const xmlChar** attributes) {
        static_cast<Recorder*>(user)->StartElement(reinterpret_cast<const char*>(name),
                                                   reinterpret_cast<const char**>(attributes));
    };
    handlers.endElement = [](void* user, const xmlChar* name) {
        static_cast<Recorder*>(user)->EndElement(reinterpret_cast<const char*>(name));
    };
    handlers.characters = [](void* user, const xmlChar* bytes, int length) {
        static_cast<Recorder*>(user)->Characters(reinterpret_cast<const char*>(bytes),
                                                 static_cast<std::size_t>(length));
    };
    xmlParserCtxtPtr context = xmlCreatePushParserCtxt(&handlers, &events, nullptr, 0, nullptr);
    Outcome outcome;
    outcome.code = PushBlocks(text, cuts, [&](const char* bytes, std::size_t size, bool last) {
        return xmlParseChunk(context, bytes, static_cast<int>(size), last ? 1 : 0);
    });
    outcome.events = events.text;
    outcome.line = context->input != nullptr ? context->input->line : 0;
    outcome.column = context->input != nullptr ? context->input->col : 0;
    xmlFreeParserCtxt(context);
    return outcome;
}

}  // namespace ParserComparison
