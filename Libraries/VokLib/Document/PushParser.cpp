#include "Document/PushParser.h"

#include "Document/ParserPlace.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Tree/ThrowVokException.h>

#include <libxml/parser.h>

#include <algorithm>
#include <new>
#include <utility>

namespace {

/// Of the parser: "xml", "xmlns" and the address of the first.
constexpr std::size_t kOwnNames = 3;
constexpr std::size_t kMostNames = VokLimits::kMaxNames + kOwnNames;

/// Entities of a document type are put down in a document of their own, which is nobody's.
void FreeParser(xmlParserCtxtPtr parser) {
    xmlFreeDoc(parser->myDoc);
    xmlFreeParserCtxt(parser);
}

}  // namespace

/// What the parser calls. Exceptions do not travel through its C frames: the first one is kept and
/// the parser stopped.
struct PushParser::Callbacks {
    template <class Event>
    static void Guard(PushParser& parser, Event event) {
        if (parser.failure) return;
        try {
            // What the event would be told may not be all that the document says.
            parser.memory.Check();
            event();
        } catch (...) {
            parser.failure = std::current_exception();
            parser.Stop();
        }
    }

    static void Start(void* user, const xmlChar* name, const xmlChar** attributes) {
        PushParser& parser = *static_cast<PushParser*>(user);
        Guard(parser, [&] {
            parser.CheckStart();
            parser.events->StartElement(reinterpret_cast<const char*>(name),
                                        reinterpret_cast<const char**>(attributes));
        });
    }

    static void End(void* user, const xmlChar* name) {
        PushParser& parser = *static_cast<PushParser*>(user);
        Guard(parser, [&] {
            --parser.depth;
            parser.events->EndElement(reinterpret_cast<const char*>(name));
        });
    }

    static void Characters(void* user, const xmlChar* bytes, int length) {
        PushParser& parser = *static_cast<PushParser*>(user);
        Guard(parser, [&] {
            parser.events->Characters(reinterpret_cast<const char*>(bytes),
                                      static_cast<std::size_t>(length));
        });
    }

    /// Behind an instruction, whose target is a name.
    static void Instruction(void* user, const xmlChar*, const xmlChar*) {
        PushParser& parser = *static_cast<PushParser*>(user);
        Guard(parser, [&] { parser.CheckNamesNearLimit(); });
    }

    /// Behind a document type.
    static void DocumentType(void* user, const xmlChar*, const xmlChar*, const xmlChar*) {
        PushParser& parser = *static_cast<PushParser*>(user);
        Guard(parser, [&] { parser.CheckNamesNearLimit(); });
    }
};

PushParser::PushParser(ParserEvents& receiver, const std::string& name, bool refuseExternalSubset)
    : DocumentParser(name),
      events(&receiver),
      refusesExternalSubset(refuseExternalSubset),
      context(nullptr, FreeParser) {
    const auto handlers = std::make_unique<xmlSAXHandler>();
    handlers->startElement = Callbacks::Start;
    handlers->endElement = Callbacks::End;
    handlers->characters = Callbacks::Characters;
    handlers->processingInstruction = Callbacks::Instruction;
    handlers->externalSubset = Callbacks::DocumentType;
    context.reset(xmlCreatePushParserCtxt(handlers.get(), this, nullptr, 0, nullptr));
    if (context == nullptr) throw std::bad_alloc();
    memory.Check();
}

PushParser::~PushParser() = default;

void PushParser::IgnoreDeclaredEncoding() {
    context->options |= XML_PARSE_IGNORE_ENC;
}

void PushParser::Stop() {
    xmlStopParser(context.get());
}

int PushParser::Push(const char* bytes, std::size_t size, bool last) {
    // A name takes a byte of the text at least.
    const xmlParserInput* const input = context->input;
    const std::size_t unread =
        input != nullptr ? static_cast<std::size_t>(input->end - input->cur) : 0;
    isNearNameLimit = CountNames() + unread + size > kMostNames;
    const int code = xmlParseChunk(context.get(), bytes, static_cast<int>(size), last ? 1 : 0);
    if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
    memory.Check();
    return code;
}

bool PushParser::PassText(const char* bytes, std::size_t size, const TextExtent& extent) {
    xmlParserInputPtr const input = context->input;
    if (depth == 0 || input == nullptr || context->instate != XML_PARSER_CONTENT ||
        input->cur != input->end)
        return false;
    input->consumed += static_cast<unsigned long>(size);
    input->line += static_cast<int>(extent.lines);
    input->col = static_cast<int>(extent.columns) + (extent.lines != 0 ? 1 : input->col);
    memory.Check();
    events->Characters(bytes, size);
    return true;
}

TextPlace PushParser::GetPlace() const {
    return PlaceOf(*context);
}

void PushParser::CheckStart() {
    if (depth == VokLimits::kMaxElementDepth)
        Fail("more than " + std::to_string(VokLimits::kMaxElementDepth) + " nested elements",
             GetPlace());
    CheckNamesNearLimit();
    if (depth == 0 && refusesExternalSubset && context->hasExternalSubset != 0) {
        ThrowVokException("The document type of \"" + GetDocumentName() +
                          "\" names an external file; external files are not read.");
    }
    ++depth;
}

std::size_t PushParser::CountNames() const {
    return static_cast<std::size_t>(xmlDictSize(context->dict));
}

void PushParser::CheckNamesNearLimit() const {
    if (isNearNameLimit && CountNames() > kMostNames)
        Fail("more than " + std::to_string(VokLimits::kMaxNames) + " different names", GetPlace());
}

void PushParser::FailBehindInput(const std::string& text) const {
    Fail(text, PlaceBehindInput(*context));
}

void PushParser::Fail(const std::string& text, TextPlace place) const {
    ThrowTextFault("Document limit exceeded: " + text + " in \"" + GetDocumentName() + "\"", place);
}
