#pragma once

#include "Document/DocumentEncoding.h"
#include "Document/MarkupScanner.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class DocumentParser;

/// Between the blocks of one document and its parser: keeps the limits, cuts the blocks between
/// pieces of markup, and spares the parser the conversion of declared ISO-8859-1 where a block
/// holds nothing but ASCII, and long plain texts, of which it has nothing to say. The events, the
/// error codes, lines and columns are those of the parser alone, which does not see, though, that
/// the last of the wide characters is no whole one.
class DocumentFeed {
  public:
    explicit DocumentFeed(DocumentParser& target) : parser(target) {}

    /// Returns the parser's error code, 0 for none. Throws a VokException for a limit, and whatever
    /// an event threw. An event may stop the parser; what is left is not fed then.
    int Feed(const char* bytes, std::size_t size, bool last);

  private:
    static constexpr char kOtherCharacter = '.';
    std::size_t PieceSize(const char* bytes, std::size_t size) const;
    int Begin(const char* bytes, std::size_t size);
    int FeedPiece(const char* bytes, std::size_t size, bool last);
    int PushScanned(const char* bytes, std::size_t size, bool last);
    int PushBehindHeld(const char* bytes, std::size_t size, bool last);
    std::size_t Scan(const char* bytes, std::size_t size);
    int Push(const char* bytes, std::size_t size, bool last);

    DocumentParser& parser;
    DocumentEncoding encoding;
    MarkupScanner scanner;
    std::string held;  // markup, or the beginning of a "]]>", that the last block left incomplete
    std::string converted;  // UTF-8 of a piece that is not plain ASCII
    std::vector<char> narrow;
    std::size_t unitBytes = 0;  // of an incomplete wide character at the end of the last piece
    char unitByte = 0;
    bool unitIsAscii = true;
    bool begun = false;
};
