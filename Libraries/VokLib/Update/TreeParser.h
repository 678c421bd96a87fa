#pragma once

#include "Document/DocumentParser.h"
#include "Document/VokTextFault.h"
#include "Document/XmlMemory.h"

#include "Update/EntityTexts.h"
#include "Update/XmlHandles.h"

#include <libxml/parser.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <vector>

/// The push parser of libxml2 as it builds trees, entities replaced, without its bounds on the
/// length of texts and with bounds of our own on everything that a few bytes could blow up.
class TreeParser : public DocumentParser {
  public:
    /// `documentSize` in bytes is what the bounds are measured by.
    explicit TreeParser(std::size_t documentSize);
    ~TreeParser() override;

    void IgnoreDeclaredEncoding() override;
    /// What a limit threw goes before any error; so does std::bad_alloc when the parser itself ran
    /// out of memory.
    int Push(const char* bytes, std::size_t byteCount, bool last) override;
    [[noreturn]] void FailBehindInput(const std::string& text) const override;

    /// Of the first error, where Push has returned one.
    TextPlace GetPlace() const;
    /// Of elements inside one another.
    std::size_t GetDepth() const { return deepest; }
    /// Null when there is none; once.
    XmlDocument TakeTree();

  private:
    struct Callbacks;
    /// Of one element inside another.
    struct Opened {
        std::size_t children = 0;
        std::size_t spaces = 0;  // namespaces that are declared on it and around it
        const xmlChar* uri = nullptr;
        const xmlChar* prefix = nullptr;
    };
    /// A start tag as the parser tells of it.
    struct Start {
        const xmlChar* prefix;
        const xmlChar* uri;
        const xmlChar** spaces;  // pairs of prefix and URI
        int spaceCount;
        int attributeCount;
        const xmlChar** attributes;
    };
    [[noreturn]] void RefuseInEntity(const xmlChar* element) const;
    void CheckStart(const Start& start);
    void CountSearches(const Start& start, std::size_t depth);
    /// Elements that the parser looks at for a prefix, from the one around an element on.
    std::size_t StepsTo(const xmlChar* prefix, std::size_t around) const;
    void CheckLimit(std::size_t count, std::size_t most, const char* what) const;
    /// Of attributes and namespace declarations, which a document type may add to each element.
    void CountAddedText(int spaceCount, const xmlChar** spaces, int attributeCount,
                        int defaultedCount, const xmlChar** attributes);
    void CountEntity(const xmlEntity* entity);
    /// In front of the replacement of an entity, and in front of a tag.
    void HoldTexts(const void* reader);
    void ReleaseTexts(const void* reader);
    void Grow(std::size_t byteCount);
    [[noreturn]] static void Fail(const std::string& text, TextPlace place);

    XmlMemoryWatch memory;
    std::exception_ptr failure;
    std::size_t size;
    std::size_t grown = 0;     // bytes that stand for others, or were added
    std::size_t searched = 0;  // elements that the stages look at to find namespaces
    std::size_t deepest = 0;
    EntityTexts texts;
    std::vector<Opened> opened;            // the document and the open elements, from the root down
    std::vector<const xmlChar*> declared;  // prefixes on these, in this order
    std::unique_ptr<xmlParserCtxt, XmlDeleter<xmlFreeParserCtxt>> context;
};
