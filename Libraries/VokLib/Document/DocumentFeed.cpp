#include "Document/DocumentFeed.h"

#include "Document/DocumentParser.h"

#include <VokLib/Tree/ThrowVokException.h>

#include <algorithm>
#include <cstring>

namespace {

// What is pushed at once stays in the processor's cache together with the parser's own copy of it.
// It ends with a tag where it can: with each push the parser looks back, byte by byte, for the last
// "<".
constexpr std::size_t kPieceBytes = 64u << 10;
// The parser refuses to look ahead through much more than it gets from a file at once.
constexpr std::size_t kMostPieceBytes = 1u << 20;

}  // namespace

int DocumentFeed::Feed(const char* bytes, std::size_t size, bool last) {
    if (!begun) {
        begun = true;
        if (const int code = Begin(bytes, size)) return code;
    }
    for (std::size_t at = 0;;) {
        const std::size_t piece = PieceSize(bytes + at, size - at);
        const int code = FeedPiece(bytes + at, piece, last && at + piece == size);
        at += piece;
        if (code != 0) return code;
        if (at < size) continue;
        // The parser passes over what is no whole character.
        if (last && unitBytes != 0) ThrowVokException("The document ends inside a character.");
        return 0;
    }
}

std::size_t DocumentFeed::PieceSize(const char* bytes, std::size_t size) const {
    if (size <= kPieceBytes) return size;
    if (encoding.unit != 1) return kPieceBytes;
    const std::size_t most = std::min(size, kMostPieceBytes);
    const void* const close = std::memchr(bytes + kPieceBytes, '>', most - kPieceBytes);
    if (close == nullptr) return most;
    return static_cast<std::size_t>(static_cast<const char*>(close) - bytes) + 1;
}

int DocumentFeed::Begin(const char* bytes, std::size_t size) {
    encoding = DetectEncoding({bytes, size});
    if (encoding.isLatin1) parser.IgnoreDeclaredEncoding();
    if (encoding.isReadable) return 0;
    // The parser judges the declaration first: it knows which encodings do not exist.
    if (const int code = parser.Push(bytes, encoding.declarationEnd, false)) return code;
    ThrowVokException("The encoding \"" + encoding.declared + "\" of \"" +
                      parser.GetDocumentName() + "\" is not supported.");
}

int DocumentFeed::FeedPiece(const char* bytes, std::size_t size, bool last) {
    std::size_t complete = Scan(bytes, size);
    const std::string* const exceeded = scanner.GetExceeded();
    if (exceeded != nullptr)
        last = false;
    else if (last)
        complete = size;

    if (complete != 0 || last)
        if (const int code = PushScanned(bytes, complete, last)) return code;
    if (exceeded != nullptr) parser.FailBehindInput(*exceeded);
    held.append(bytes + complete, size - complete);
    return 0;
}

/// Pushes what was held back and a piece, of which plain texts go past the parser.
int DocumentFeed::PushScanned(const char* bytes, std::size_t size, bool last) {
    std::size_t pushed = 0;
    if (!encoding.isLatin1 || !parser.PassesTexts()) return PushBehindHeld(bytes, size, last);
    for (const MarkupScanner::LongText& text : scanner.GetLongTexts()) {
        TextExtent extent;
        const char* const begin = bytes + text.begin;
        const std::size_t length = text.end - text.begin;
        // What is held in front of a text are brackets, which the parser must see in one with it.
        if (text.begin == 0 && !held.empty()) continue;
        if (!IsPlainText(begin, length, extent)) continue;
        if (const int code = PushBehindHeld(bytes + pushed, text.begin - pushed, false))
            return code;
        pushed = parser.PassText(begin, length, extent) ? text.end : text.begin;
    }
    return PushBehindHeld(bytes + pushed, size - pushed, last);
}

int DocumentFeed::PushBehindHeld(const char* bytes, std::size_t size, bool last) {
    if (size == 0 && held.empty() && !last) return 0;
    if (held.empty()) return Push(bytes, size, last);
    held.append(bytes, size);
    const int code = Push(held.data(), held.size(), last);
    held.clear();
    return code;
}

/// As MarkupScanner::Scan, in bytes of the document's encoding.
std::size_t DocumentFeed::Scan(const char* bytes, std::size_t size) {
    if (encoding.unit == 1) return scanner.Scan(bytes, size);
    const std::size_t before = unitBytes;
    narrow.clear();
    for (std::size_t i = 0; i < size; ++i) {
        const char byte = bytes[i];
        // A character that is not ASCII has other bytes too; it begins and ends no markup, so any
        // other stands for it.
        if (unitBytes == encoding.significantByte)
            unitByte = unitIsAscii ? byte : kOtherCharacter;
        else if (byte != 0) {
            unitIsAscii = false;
            unitByte = kOtherCharacter;
        }
        if (++unitBytes < encoding.unit) continue;
        narrow.push_back(unitByte);
        unitBytes = 0;
        unitIsAscii = true;
    }
    const std::size_t complete = scanner.Scan(narrow.data(), narrow.size());
    if (complete == narrow.size()) return size;
    return complete * encoding.unit > before ? complete * encoding.unit - before : 0;
}

int DocumentFeed::Push(const char* bytes, std::size_t size, bool last) {
    if (!encoding.isLatin1 || IsAscii(bytes, size)) return parser.Push(bytes, size, last);
    converted.clear();
    AppendLatin1AsUtf8(converted, bytes, size);
    return parser.Push(converted.data(), converted.size(), last);
}
