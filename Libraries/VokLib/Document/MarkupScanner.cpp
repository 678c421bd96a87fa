#include "Document/MarkupScanner.h"

#include <VokLib/Base/VokLimits.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace {

constexpr std::array<bool, 256> MakeTagStops() {
    std::array<bool, 256> stops{};
    stops['>'] = stops['"'] = stops['\''] = true;
    return stops;
}
constexpr std::array<bool, 256> kTagStops = MakeTagStops();

const char* Find(const char* p, const char* end, char c) {
    const void* found = std::memchr(p, c, static_cast<std::size_t>(end - p));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

/// An attribute takes five characters at least, so no tag of up to this many holds too many.
constexpr std::ptrdiff_t kHarmlessBytes = VokLimits::kMaxAttributes * 5;
static_assert(kHarmlessBytes <= VokLimits::kMaxMarkupBytes);

/// Texts that are shorter are not worth a look of their own.
constexpr std::ptrdiff_t kLongTextBytes = 4096;

/// The first "<" from the one at `p` on that needs a closer look. A tag in front of a near "<" does
/// not: it has ended before it, for no value of an attribute holds one. Where there are no other
/// pieces of markup than tags, one "<" in each half window tells as much as all of them.
const char* FindMarkup(const char* p, const char* end, bool onlyTags) {
    while (end - p > 1 && p[1] != '!' && p[1] != '?') {
        const char* const window = p + std::min(end - p, kHarmlessBytes);
        const char* next = window;
        if (onlyTags && window - p == kHarmlessBytes)
            next = Find(p + kHarmlessBytes / 2, window, '<');
        if (next == window) next = Find(p + 1, window, '<');
        if (next == window) break;
        p = next;
    }
    return p;
}

}  // namespace

std::size_t MarkupScanner::Scan(const char* bytes, std::size_t size) {
    longTexts.clear();
    if (size == 0) return 0;
    const char* const end = bytes + size;
    first = from = bytes;
    onlyTags = Find(bytes, end, '!') == end && Find(bytes, end, '?') == end;
    for (const char* p = bytes; p < end && exceeded.empty();) p = Step(p, end);
    std::size_t complete = size;
    if (state == State::Text) {
        // "]]>" is an error in a text, which the parser sees only where it gets it in one.
        while (complete > 0 && size - complete < 2 && bytes[complete - 1] == ']') --complete;
    } else {
        complete = static_cast<std::size_t>(from - bytes);
        bytesBefore = IndexInMarkup(end);
        if (exceeded.empty()) CheckBytes(bytesBefore);
    }
    const std::size_t kept = std::min(size, sizeof(lastBytes));
    std::memmove(lastBytes, lastBytes + kept, sizeof(lastBytes) - kept);
    std::memcpy(lastBytes + sizeof(lastBytes) - kept, end - kept, kept);
    return complete;
}

const char* MarkupScanner::Step(const char* p, const char* end) {
    switch (state) {
        case State::Text:
            from = p;
            p = Find(p, end, '<');
            if (p - from >= kLongTextBytes)
                longTexts.push_back(
                    {static_cast<std::size_t>(from - first), static_cast<std::size_t>(p - first)});
            p = FindMarkup(p, end, onlyTags);
            if (p == end) return end;
            from = p;
            bytesBefore = 0;
            attributes = 0;
            choices = 0;
            state = State::Opened;
            return p + 1;
        case State::Opened:
            word.clear();
            inSubset = false;
            if (*p == '!')
                state = State::Declaration;
            else if (*p == '?')
                state = State::Instruction;
            else
                state = *p == '/' ? State::Plain : State::Tag;
            return state == State::Tag ? p : p + 1;
        case State::Declaration:
            return ScanDeclaration(p);
        case State::Tag:
            return ScanTag(p, end);
        case State::Quoted:
            return ScanQuoted(p, end, State::Tag);
        case State::Plain:
            p = Find(p, end, '>');
            if (p == end) return end;
            Finish(p + 1);
            return p + 1;
        case State::Instruction:
            return ScanUntil(p, end, "?>", 3, State::Text);
        case State::Comment:
            return ScanUntil(p, end, "-->", 6, State::Text);
        case State::CData:
            return ScanUntil(p, end, "]]>", 11, State::Text);
        case State::Doctype:
            return ScanDoctype(p, end);
        case State::DoctypeQuoted:
            return ScanQuoted(p, end, State::Doctype);
        case State::DoctypeInstruction:
            return ScanUntil(p, end, "?>", partBegin + 3, State::Doctype);
        case State::DoctypeComment:
            return ScanUntil(p, end, "-->", partBegin + 6, State::Doctype);
    }
    return end;
}

const char* MarkupScanner::ScanTag(const char* p, const char* end) {
    while (p < end && !kTagStops[static_cast<unsigned char>(*p)]) ++p;
    if (p == end) return end;
    if (*p == '>') {
        Finish(p + 1);
        return p + 1;
    }
    quote = *p;
    state = State::Quoted;
    // A well-formed attribute has one quoted value, and the parser stops at the first that is not.
    if (++attributes > VokLimits::kMaxAttributes)
        exceeded =
            "more than " + std::to_string(VokLimits::kMaxAttributes) + " attributes on one element";
    return p + 1;
}

const char* MarkupScanner::ScanQuoted(const char* p, const char* end, State behind) {
    p = Find(p, end, quote);
    if (p == end) return end;
    state = behind;
    return p + 1;
}

const char* MarkupScanner::ScanDeclaration(const char* p) {
    constexpr std::string_view kWords[] = {"--", "[CDATA[", "DOCTYPE"};
    constexpr State kStates[] = {State::Comment, State::CData, State::Doctype};
    word.push_back(*p);
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        if (word == kWords[i]) {
            state = kStates[i];
            return p + 1;
        }
        if (kWords[i].starts_with(word)) return p + 1;
    }
    state = State::Plain;
    return p;
}

/// Looks for `closing`, which ends in ">" at `atLeast` or behind, so that the opening is not taken
/// for a part of it.
const char* MarkupScanner::ScanUntil(const char* p, const char* end, const char* closing,
                                     std::size_t atLeast, State behind) {
    const std::size_t before = std::strlen(closing) - 1;
    for (; (p = Find(p, end, '>')) != end; ++p) {
        if (IndexInMarkup(p) < atLeast || ByteBefore(p, 1) != closing[before - 1]) continue;
        if (before == 2 && ByteBefore(p, 2) != closing[0]) continue;
        if (behind == State::Text)
            Finish(p + 1);
        else
            state = behind;
        return p + 1;
    }
    return end;
}

const char* MarkupScanner::ScanDoctype(const char* p, const char* end) {
    for (; p < end; ++p) {
        switch (*p) {
            case '"':
            case '\'':
                quote = *p;
                state = State::DoctypeQuoted;
                return p + 1;
            case '[':
                inSubset = true;
                break;
            case ']':
                inSubset = false;
                break;
            case '|':
                if (++choices > VokLimits::kMaxDoctypeChoices) {
                    exceeded = "more than " + std::to_string(VokLimits::kMaxDoctypeChoices) +
                               " choices in one document type";
                    return end;
                }
                break;
            case '?':
                if (!inSubset || ByteBefore(p, 1) != '<') break;
                state = State::DoctypeInstruction;
                partBegin = IndexInMarkup(p) - 1;
                return p + 1;
            case '-':
                if (ByteBefore(p, 1) != '-' || ByteBefore(p, 2) != '!' || ByteBefore(p, 3) != '<')
                    break;
                state = State::DoctypeComment;
                partBegin = IndexInMarkup(p) - 3;
                return p + 1;
            case '>':
                if (inSubset) break;
                Finish(p + 1);
                return p + 1;
            default:
                break;
        }
    }
    return end;
}

void MarkupScanner::Finish(const char* behind) {
    if (CheckBytes(IndexInMarkup(behind))) state = State::Text;
}

bool MarkupScanner::CheckBytes(std::size_t count) {
    const bool doctype = state >= State::Doctype;
    const std::size_t limit = doctype ? VokLimits::kMaxDoctypeBytes : VokLimits::kMaxMarkupBytes;
    if (count <= limit) return true;
    exceeded = "more than " + std::to_string(limit) + " bytes in one " +
               (doctype ? "document type" : "tag, comment or other markup");
    return false;
}

char MarkupScanner::ByteBefore(const char* p, std::size_t distance) const {
    const std::size_t inBlock = static_cast<std::size_t>(p - first);
    return inBlock >= distance ? *(p - distance)
                               : lastBytes[sizeof(lastBytes) - (distance - inBlock)];
}
