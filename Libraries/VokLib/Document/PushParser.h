#pragma once

#include "Document/DocumentParser.h"
#include "Document/ParserEvents.h"
#include "Document/VokTextFault.h"
#include "Document/XmlMemory.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <string>

struct _xmlParserCtxt;

/// The push parser of libxml2 in its first SAX form. All handlers but three, and two that look at
/// the number of names, are null and the parser's user data is not its own context, so that
/// declared entities are neither kept nor expanded and nothing outside the text is opened.
class PushParser : public DocumentParser {
  public:
    /// With `refuseExternalSubset` a document type that names a file of its own ends the parse at
    /// the root element; the entities of such a document would vanish without an error.
    PushParser(ParserEvents& receiver, const std::string& name, bool refuseExternalSubset);
    ~PushParser() override;

    /// May be called while an event is being received.
    void SetEvents(ParserEvents& receiver) { events = &receiver; }
    void IgnoreDeclaredEncoding() override;
    /// Ends the parse from within an event; what was pushed already counts as an error then.
    void Stop();

    /// What an event threw, or a limit on nesting or names, goes before any error; so does
    /// std::bad_alloc when the parser itself ran out of memory.
    int Push(const char* bytes, std::size_t size, bool last) override;
    bool PassesTexts() const override { return true; }
    bool PassText(const char* bytes, std::size_t size, const TextExtent& extent) override;

    /// What the parser has reached.
    TextPlace GetPlace() const;
    [[noreturn]] void FailBehindInput(const std::string& text) const override;

  private:
    struct Callbacks;
    [[noreturn]] void Fail(const std::string& text, TextPlace place) const;
    void CheckStart();
    std::size_t CountNames() const;
    void CheckNamesNearLimit() const;

    ParserEvents* events;
    bool refusesExternalSubset;
    std::size_t depth = 0;
    bool isNearNameLimit = false;  // what is being pushed may hold one name too many
    XmlMemoryWatch memory;
    std::exception_ptr failure;
    std::unique_ptr<_xmlParserCtxt, void (*)(_xmlParserCtxt*)> context;
};
