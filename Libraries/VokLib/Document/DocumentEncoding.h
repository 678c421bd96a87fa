#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What a document's first bytes say about its encoding.
struct DocumentEncoding {
    /// Of one ASCII character: 2 for UTF-16, 4 for UCS-4, else 1.
    std::size_t unit = 1;
    /// Which byte of the unit holds the character.
    std::size_t significantByte = 0;
    /// Declared in a well-formed XML declaration; empty for none.
    std::string declared;
    /// Bytes up to the end of that declaration.
    std::size_t declarationEnd = 0;
    /// In bytes of ISO-8859-1 from the first on, so that they can be handed to the parser in its
    /// own form.
    bool isLatin1 = false;
    /// ASCII stands for itself (in each unit), so that markup can be told from text without
    /// decoding.
    bool isReadable = true;
};

/// Looks at the first block of a document; a declaration that does not end in it counts as none.
DocumentEncoding DetectEncoding(std::string_view bytes);

/// True when no byte has its high bit set.
bool IsAscii(const char* bytes, std::size_t size);

/// Appends bytes of ISO-8859-1 as UTF-8.
void AppendLatin1AsUtf8(std::string& out, const char* bytes, std::size_t size);
