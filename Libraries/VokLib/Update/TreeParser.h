#pragma once

#include "Document/DocumentParser.h"
#include "Document/VokTextFault.h"
#include "Document/XmlMemory.h"

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
    };
    void CheckStart(int spaceCount, int attributeCount);
    void CheckLimit(std::size_t count, std::size_t most, const char* what) const;
    /// Of attributes and namespace declarations, which a document type may add to each element.
    void CountAddedText(int spaceCount, const xmlChar** spaces, int attributeCount,
                        int defaultedCount, const xmlChar** attributes);
    void CountEntity(const xmlEntity* entity);
    void Grow(std::size_t byteCount);
    [[noreturn]] static void Fail(const std::string& text, TextPlace place);

    XmlMemoryWatch memory;
    std::exception_ptr failure;
    std::size_t size;
    std::size_t grown = 0;  // bytes that stand for others, or were added
    std::size_t deepest = 0;
    std::vector<Opened> opened;  // the document and the open elements, from the root down
    std::unique_ptr<xmlParserCtxt, XmlDeleter<xmlFreeParserCtxt>> context;
};
