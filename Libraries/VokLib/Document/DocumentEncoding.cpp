#include "Document/DocumentEncoding.h"

#include <QelTools/AsciiText.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Reads the parts of an XML declaration: version, encoding, standalone, each once and in this
/// order.
class DeclarationReader {
  public:
    explicit DeclarationReader(std::string_view declaration) : text(declaration) {}

    bool Read(std::string& encoding) {
        constexpr std::string_view kOpening = "<?xml";
        if (!text.starts_with(kOpening)) return false;
        at = kOpening.size();
        std::string ignored;
        if (!SkipBlanks() || !ReadPart("version", ignored)) return false;
        bool blank = SkipBlanks();
        if (blank && ReadPart("encoding", encoding)) blank = SkipBlanks();
        if (blank && ReadPart("standalone", ignored)) SkipBlanks();
        return text.substr(at, 2) == "?>";
    }

    std::size_t End() const { return at + 2; }

  private:
    bool SkipBlanks() {
        const std::size_t begin = at;
        at = std::min(text.find_first_not_of(kBlanks, at), text.size());
        return at != begin;
    }

    bool ReadPart(std::string_view name, std::string& value) {
        if (text.substr(at, name.size()) != name) return false;
        at += name.size();
        SkipBlanks();
        if (at >= text.size() || text[at] != '=') return false;
        ++at;
        SkipBlanks();
        if (at >= text.size() || (text[at] != '"' && text[at] != '\'')) return false;
        const std::size_t end = text.find(text[at], at + 1);
        if (end == std::string_view::npos) return false;
        value = text.substr(at + 1, end - at - 1);
        at = end + 1;
        return true;
    }

    std::string_view text;
    std::size_t at = 0;
};

/// The families of encodings in which a byte below 0x80 is that ASCII character wherever markup
/// could begin or end.
bool KeepsAscii(const std::string& lowerName) {
    constexpr std::string_view kFamilies[] = {
        "utf-8",     "utf8",       "us-ascii",    "ascii",       "iso-8859-", "iso_8859-",
        "iso8859-",  "iso-latin-", "latin",       "windows-125", "cp125",     "koi8-",
        "shift_jis", "sjis",       "windows-31j", "cp932",       "euc-",      "gb2312",
        "gbk",       "gb18030",    "big5",        "tis-620",     "macintosh", "cp437",
        "cp85",      "cp866",      "ibm437",      "ibm85",       "ibm866"};
    return std::any_of(std::begin(kFamilies), std::end(kFamilies),
                       [&](std::string_view family) { return lowerName.starts_with(family); });
}

bool IsWide(const std::string& lowerName) {
    constexpr std::string_view kFamilies[] = {"utf-16", "utf16", "utf-32", "utf32",
                                              "ucs-",   "ucs2",  "ucs4",   "iso-10646-ucs-"};
    return std::any_of(std::begin(kFamilies), std::end(kFamilies),
                       [&](std::string_view family) { return lowerName.starts_with(family); });
}

bool NamesLatin1(const std::string& lowerName) {
    return lowerName == "iso-8859-1" || lowerName == "iso-latin-1";
}

/// The signatures of XML 1.0, appendix F.1.
void DetectUnit(std::string_view bytes, DocumentEncoding& encoding) {
    using namespace std::string_view_literals;
    const auto set = [&](std::size_t unit, std::size_t significant) {
        encoding.unit = unit;
        encoding.significantByte = significant;
    };
    if (bytes.starts_with("\0\0\0<"sv))
        set(4, 3);
    else if (bytes.starts_with("<\0\0\0"sv))
        set(4, 0);
    else if (bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<\0?"sv))
        set(2, 1);
    else if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0?\0"sv))
        set(2, 0);
    // EBCDIC, and UCS-4 in orders that no machine writes.
    else if (bytes.starts_with("\x4C\x6F\xA7\x94"sv) || bytes.starts_with("\0\0<\0"sv) ||
             bytes.starts_with("\0<\0\0"sv))
        encoding.isReadable = false;
}

}  // namespace

DocumentEncoding DetectEncoding(std::string_view bytes) {
    DocumentEncoding encoding;
    DetectUnit(bytes, encoding);
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    const std::size_t mark = bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    constexpr std::size_t kLongestDeclaration = 4096;
    std::string narrow;
    std::string_view text = bytes.substr(mark);
    if (encoding.unit > 1) {
        for (std::size_t i = encoding.significantByte;
             i < bytes.size() && narrow.size() < kLongestDeclaration; i += encoding.unit)
            narrow.push_back(bytes[i]);
        text = narrow;
        if (!text.empty() && text.front() != '<') text.remove_prefix(1);  // the byte order mark
    }
    DeclarationReader reader(text);
    if (!reader.Read(encoding.declared)) {
        encoding.declared.clear();
        return encoding;
    }
    encoding.declarationEnd =
        mark +
        (reader.End() + (narrow.size() - std::min(narrow.size(), text.size()))) * encoding.unit;
    const std::string name = QelTools::Common::ToLowerAscii(encoding.declared);
    if (!name.empty())
        encoding.isReadable =
            encoding.isReadable && (encoding.unit > 1 ? IsWide(name) : KeepsAscii(name));
    encoding.isLatin1 = encoding.unit == 1 && mark == 0 && NamesLatin1(name);
    return encoding;
}

bool IsAscii(const char* bytes, std::size_t size) {
    std::uint64_t seen[4] = {};
    std::size_t i = 0;
    for (; i + sizeof(seen) <= size; i += sizeof(seen)) {
        std::uint64_t words[4];
        std::memcpy(words, bytes + i, sizeof(words));
        for (int word = 0; word < 4; ++word) seen[word] |= words[word];
    }
    unsigned char rest = 0;
    for (; i < size; ++i) rest |= static_cast<unsigned char>(bytes[i]);
    constexpr std::uint64_t kHighBits = 0x8080808080808080u;
    return ((seen[0] | seen[1] | seen[2] | seen[3]) & kHighBits) == 0 && rest < 0x80;
}

void AppendLatin1AsUtf8(std::string& out, const char* bytes, std::size_t size) {
    const std::size_t high = static_cast<std::size_t>(
        std::count_if(bytes, bytes + size, [](char c) { return (c & 0x80) != 0; }));
    out.reserve(out.size() + size + high);
    for (const char* p = bytes; p < bytes + size; ++p) {
        const unsigned char c = static_cast<unsigned char>(*p);
        if (c < 0x80) {
            out.push_back(*p);
        } else {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
}
