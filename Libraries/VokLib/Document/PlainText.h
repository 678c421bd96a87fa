#pragma once

#include <cstddef>

/// How far a text moves the place in a document.
struct TextExtent {
    std::size_t lines = 0;
    std::size_t columns = 0;  ///< behind the last line feed, or in all when there is none
};

/// True for a text that means itself in an element's contents, whatever stands beside it: printable
/// ASCII and line feeds, without references and what ends a CDATA section. `extent` is set then.
/// That there is no "<" in it is not looked at.
bool IsPlainText(const char* bytes, std::size_t size, TextExtent& extent);
