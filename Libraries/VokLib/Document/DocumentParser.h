#pragma once

#include "Document/PlainText.h"

#include <cstddef>
#include <string>

/// A parser that is fed piece by piece, as DocumentFeed sees it.
class DocumentParser {
  public:
    /// `name` is the document's, for messages; it has to outlive the parser.
    explicit DocumentParser(const std::string& name) : documentName(name) {}
    virtual ~DocumentParser() = default;
    DocumentParser(const DocumentParser&) = delete;
    DocumentParser& operator=(const DocumentParser&) = delete;

    const std::string& GetDocumentName() const { return documentName; }
    /// Before the first bytes: they are UTF-8, whatever the XML declaration says.
    virtual void IgnoreDeclaredEncoding() = 0;
    /// Returns libxml2's error code, 0 for none.
    virtual int Push(const char* bytes, std::size_t size, bool last) = 0;
    /// Whether PassText ever takes one; pushes are not cut for it elsewhere.
    virtual bool PassesTexts() const { return false; }
    /// Takes a plain text for pushed where it can tell its user of it without parsing: when all
    /// that was pushed has been parsed and contents of an element may follow. False, and nothing
    /// done, elsewhere.
    virtual bool PassText(const char*, std::size_t, const TextExtent&) { return false; }
    /// Throws a VokTextFault that tells the limit and the place behind everything that was pushed.
    [[noreturn]] virtual void FailBehindInput(const std::string& text) const = 0;

  private:
    const std::string& documentName;
};
