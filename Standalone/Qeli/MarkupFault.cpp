#include "MarkupFault.h"

namespace {

constexpr std::string_view kTextEnd = "]]>";

bool IsForbidden(char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
}

std::string NameControl(char c) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("the control character 0x") + kDigits[byte >> 4] + kDigits[byte & 15];
}

}  // namespace

std::string FindMarkupFault(std::string_view markup) {
    bool inTag = false;
    bool inValue = false;
    for (std::size_t i = 0; i < markup.size(); ++i) {
        const char c = markup[i];
        if (IsForbidden(c)) return NameControl(c);
        if (inValue) {
            if (c == '<') return "the character \"<\" in an attribute value";
            inValue = c != '"';
        } else if (inTag) {
            inValue = c == '"';
            inTag = c != '>';
        } else {
            if (markup.substr(i, kTextEnd.size()) == kTextEnd) return "\"]]>\" in a text";
            inTag = c == '<';
        }
    }
    return {};
}
