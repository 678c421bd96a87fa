#include "Update/TreeParser.h"

#include "Document/ParserPlace.h"

#include <VokLib/Base/VokLimits.h>
#include <VokLib/Tree/ThrowVokException.h>

#include "Update/EntitySizes.h"

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <new>
#include <utility>

namespace {

/// The messages of the update name no document; who asked for it knows which one it was.
const std::string kNoName;

/// What counts for an attribute that the document type adds, or a namespace that it may have added.
constexpr std::size_t kAddedBytes = 64;

}  // namespace

/// What the parser calls, with its own context as user data. Exceptions do not travel through its C
/// frames: the first one is kept and the parser stopped.
struct TreeParser::Callbacks {
    static TreeParser& Of(void* user) {
        return *static_cast<TreeParser*>(static_cast<xmlParserCtxtPtr>(user)->_private);
    }

    template <class Check>
    static bool Passes(TreeParser& parser, Check check) {
        if (parser.failure) return false;
        try {
            check();
            return true;
        } catch (...) {
            parser.failure = std::current_exception();
            xmlStopParser(parser.context.get());
            return false;
        }
    }

    static void Start(void* user, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                      int spaceCount, const xmlChar** spaces, int attributeCount,
                      int defaultedCount, const xmlChar** attributes) {
        TreeParser& parser = Of(user);
        const bool passes = Passes(parser, [&] {
            if (user != parser.context.get()) parser.RefuseInEntity(name);
            parser.CheckStart({prefix, uri, spaces, spaceCount, attributeCount, attributes});
            parser.CountAddedText(spaceCount, spaces, attributeCount, defaultedCount, attributes);
            parser.ReleaseTexts(user);
        });
        if (passes)
            xmlSAX2StartElementNs(user, name, prefix, uri, spaceCount, spaces, attributeCount,
                                  defaultedCount, attributes);
    }

    static void End(void* user, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
        TreeParser& parser = Of(user);
        if (Passes(parser, [&] { parser.ReleaseTexts(user); }))
            xmlSAX2EndElementNs(user, name, prefix, uri);
    }

    static xmlEntityPtr Entity(void* user, const xmlChar* name) {
        return Checked(user, xmlSAX2GetEntity(user, name));
    }

    static xmlEntityPtr ParameterEntity(void* user, const xmlChar* name) {
        return Checked(user, xmlSAX2GetParameterEntity(user, name));
    }

    static xmlEntityPtr Checked(void* user, xmlEntityPtr entity) {
        if (entity == nullptr) return nullptr;
        TreeParser& parser = Of(user);
        const bool passes = Passes(parser, [&] {
            parser.CountEntity(entity);
            parser.HoldTexts(user);
        });
        return passes ? entity : nullptr;
    }

    /// An entity that was not replaced would vanish without an error.
    static void Reference(void* user, const xmlChar* name) {
        TreeParser& parser = Of(user);
        Passes(parser, [&] {
            ThrowTextFault("Failed to parse out of date .qeli document. The entity \"" +
                               std::string(FromXml(name)) + "\" is not declared.",
                           parser.GetPlace());
        });
    }

    template <class Error>  // versions of the library differ in whether it is const
    static void PassOver(void*, Error) {}
};

TreeParser::TreeParser(std::size_t documentSize)
    : DocumentParser(kNoName),
      size(documentSize),
      context(xmlCreatePushParserCtxt(nullptr, nullptr, nullptr, 0, nullptr)) {
    if (context == nullptr) throw std::bad_alloc();
    xmlCtxtUseOptions(context.get(),
                      XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_NONET | XML_PARSE_HUGE);
    context->_private = this;
    xmlSAXHandler& handlers = *context->sax;
    handlers.startElementNs = Callbacks::Start;
    handlers.endElementNs = Callbacks::End;
    handlers.getEntity = Callbacks::Entity;
    handlers.getParameterEntity = Callbacks::ParameterEntity;
    handlers.reference = Callbacks::Reference;
    // What makes a document ill-formed is Push's result. A fault of namespaces alone does not: such
    // a document goes on to the stages as it would to the reader.
    handlers.serror = Callbacks::PassOver;
    handlers.comment = nullptr;
    handlers.processingInstruction = nullptr;
    memory.Check();
}

TreeParser::~TreeParser() {
    xmlFreeDoc(std::exchange(context->myDoc, nullptr));
}

void TreeParser::IgnoreDeclaredEncoding() {
    context->options |= XML_PARSE_IGNORE_ENC;
}

int TreeParser::Push(const char* bytes, std::size_t byteCount, bool last) {
    const int code = xmlParseChunk(context.get(), bytes, static_cast<int>(byteCount), last ? 1 : 0);
    if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
    memory.Check();
    return code;
}

XmlDocument TreeParser::TakeTree() {
    return XmlDocument(std::exchange(context->myDoc, nullptr));
}

TextPlace TreeParser::GetPlace() const {
    return PlaceOf(*context);
}

/// The parser reads the content of an entity apart. An element in it would lose the namespace that
/// is declared around the entity, and then the stages would drop it.
void TreeParser::RefuseInEntity(const xmlChar* element) const {
    ThrowTextFault("Failed to parse out of date .qeli document. An entity holds the element \"" +
                       std::string(FromXml(element)) + "\"; texts alone are read from entities.",
                   GetPlace());
}

void TreeParser::CheckStart(const Start& start) {
    const auto depth = static_cast<std::size_t>(std::max(context->nodeNr, 0));
    deepest = std::max(deepest, depth + 1);
    CheckLimit(depth + 1, VokLimits::kMaxElementDepth, "nested elements");
    if (opened.size() < depth + 2) opened.resize(depth + 2);
    opened[depth + 1] = {0, opened[depth].spaces + static_cast<std::size_t>(start.spaceCount),
                         start.uri, start.prefix};
    CheckLimit(++opened[depth].children, VokLimits::kMaxOldChildren, "elements in one");
    CheckLimit(opened[depth + 1].spaces, VokLimits::kMaxOldNamespaces,
               "namespaces declared at one place");
    // With those that the document type adds, which the scan of the markup does not see.
    CheckLimit(static_cast<std::size_t>(start.attributeCount), VokLimits::kMaxAttributes,
               "attributes on one element");
    CheckLimit(static_cast<std::size_t>(xmlDictSize(context->dict)), VokLimits::kMaxOldNames,
               "different names");
    declared.resize(opened[depth].spaces);
    for (int i = 0; i < start.spaceCount; ++i) declared.push_back(start.spaces[2 * i]);
    CountSearches(start, depth);
    if (depth == 0 && context->hasExternalSubset != 0) {
        ThrowVokException(
            "Failed to parse out of date .qeli document. Its document type names an external file; "
            "external files are not read.");
    }
}

/// The parser and each stage look for the declaration of an attribute's namespace. A stage that
/// copies an element which is not in the namespace of what is around it takes all that are declared
/// there along, each looked for up to the root; of others the parser alone looks for one.
void TreeParser::CountSearches(const Start& start, std::size_t depth) {
    const Opened& around = opened[depth];
    std::size_t copied = 0;
    if (xmlStrEqual(start.uri, opened[1].uri) == 0)
        copied += static_cast<std::size_t>(start.spaceCount);
    if (xmlStrEqual(start.uri, around.uri) == 0 || xmlStrEqual(start.prefix, around.prefix) == 0)
        ++copied;
    std::size_t steps = copied * depth * (opened[depth + 1].spaces + 1);
    if (copied == 0 && start.uri != nullptr) steps += StepsTo(start.prefix, depth);
    for (int i = 0; i < start.attributeCount; ++i) {
        const xmlChar* const prefix = start.attributes[5 * i + 1];
        if (prefix != nullptr && FromXml(prefix) != "xml") steps += depth;
    }
    searched += steps;
    if (searched > VokLimits::kFreeSearches + VokLimits::kSearchesPerByte * size)
        Fail("more than " + std::to_string(VokLimits::kFreeSearches) + " steps and " +
                 std::to_string(VokLimits::kSearchesPerByte) +
                 " for each byte of the document to find the namespaces of elements and attributes",
             GetPlace());
}

/// It passes over the namespace of the first itself, but not over what is declared there.
std::size_t TreeParser::StepsTo(const xmlChar* prefix, std::size_t around) const {
    for (std::size_t level = around; level > 0; --level) {
        if (level < around && xmlStrEqual(opened[level].prefix, prefix) != 0) return around - level;
        for (std::size_t i = opened[level - 1].spaces; i < opened[level].spaces; ++i)
            if (xmlStrEqual(declared[i], prefix) != 0) return around - level;
    }
    return around;
}

void TreeParser::CheckLimit(std::size_t count, std::size_t most, const char* what) const {
    if (count > most) Fail("more than " + std::to_string(most) + " " + what, GetPlace());
}

void TreeParser::CountAddedText(int spaceCount, const xmlChar** spaces, int attributeCount,
                                int defaultedCount, const xmlChar** attributes) {
    // Without a document type nothing stands there but what was read.
    if (context->myDoc == nullptr || context->myDoc->intSubset == nullptr) return;
    // However short it is, the parser compares each with all before it.
    std::size_t byteCount = kAddedBytes * static_cast<std::size_t>(spaceCount + defaultedCount);
    for (int i = 0; i < spaceCount; ++i) byteCount += FromXml(spaces[2 * i + 1]).size();
    for (int i = 0; i < attributeCount; ++i)
        byteCount += static_cast<std::size_t>(attributes[5 * i + 4] - attributes[5 * i + 3]);
    Grow(byteCount);
}

void TreeParser::CountEntity(const xmlEntity* entity) {
    if (entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY ||
        entity->etype == XML_EXTERNAL_PARAMETER_ENTITY)
        ThrowVokException("Failed to parse out of date .qeli document. The entity \"" +
                          std::string(FromXml(entity->name)) +
                          "\" is an external file; external files are not read.");
    if (entity->etype == XML_INTERNAL_PREDEFINED_ENTITY) return;
    Grow(ReplacedSize(*entity));
}

/// Texts inside the content of an entity are no longer than the document type.
void TreeParser::HoldTexts(const void* reader) {
    if (reader != context.get() || context->node == nullptr) return;
    texts.Hold(*context->node);
    context->nodemem = context->nodelen = 0;  // of the text that is gone
}

void TreeParser::ReleaseTexts(const void* reader) {
    if (reader == context.get()) texts.Release();
}

void TreeParser::Grow(std::size_t byteCount) {
    grown += std::min(byteCount, VokLimits::kFreeAddedBytes + 1);
    if (grown > VokLimits::kFreeAddedBytes + 2 * size)
        Fail("more text in entities and default attributes than " +
                 std::to_string(VokLimits::kFreeAddedBytes) +
                 " bytes and twice the size of the document",
             GetPlace());
}

void TreeParser::FailBehindInput(const std::string& text) const {
    Fail(text, PlaceBehindInput(*context));
}

void TreeParser::Fail(const std::string& text, TextPlace place) {
    ThrowTextFault("Document limit exceeded: " + text, place);
}
