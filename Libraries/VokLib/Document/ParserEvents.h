#pragma once

#include <cstddef>

/// Receives what the push parser finds. Names and texts are UTF-8. A name stays where it is as long
/// as the parser lives; everything else is valid until the operation returns. What an operation
/// throws stops the parser and comes out of PushParser::Push.
class ParserEvents {
  public:
    virtual ~ParserEvents() = default;
    /// `attributes`: names and values by turns, ended by a null; null when there are none.
    virtual void StartElement(const char* name, const char** attributes) = 0;
    virtual void EndElement(const char* name) = 0;
    virtual void Characters(const char* bytes, std::size_t length) = 0;
};
