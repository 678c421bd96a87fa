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
    constexpr std::uint64_t kHighBits = 0x8080808080808080u;
    const auto word = [bytes](std::size_t at) {
        std::uint64_t value;
        std::memcpy(&value, bytes + at, sizeof value);
        return value;
    };
    if (size < 8) {
        unsigned char seen = 0;
        for (std::size_t i = 0; i < size; ++i) seen |= static_cast<unsigned char>(bytes[i]);
        return seen < 0x80;
    }
    std::uint64_t seen = word(size - 8);
    std::uint64_t others[3] = {};
    std::size_t i = 0;
    for (; i + 32 <= size; i += 32) {
        seen |= word(i);
        for (std::size_t k = 0; k < 3; ++k) others[k] |= word(i + 8 * (k + 1));
    }
    for (; i + 8 <= size; i += 8) seen |= word(i);
    return ((seen | others[0] | others[1] | others[2]) & kHighBits) == 0;
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
