#include <VokLib/Text/VokEncoding.h>

#include <QelTools/Exception.h>

#include <algorithm>

namespace VokEncoding {

namespace {

bool HasHighBit(char c) {
    return (static_cast<unsigned char>(c) & 0x80u) != 0;
}

/// ISO-8859-1 holds the code points up to 0xFF: in UTF-8 one byte, or two that begin with 0xC2 or
/// 0xC3.
constexpr unsigned char kLeadLow = 0xC2;
constexpr unsigned char kLeadHigh = 0xC3;

}  // namespace

bool HasHighBytes(std::string_view text) {
    return std::any_of(text.begin(), text.end(), HasHighBit);
}

std::string ToLatin1(std::string_view utf8) {
    std::string latin1;
    latin1.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80u) {
            latin1 += utf8[i];
            continue;
        }
        const bool fits = lead == kLeadLow || lead == kLeadHigh;
        const auto tail =
            ++i < utf8.size() ? static_cast<unsigned char>(utf8[i]) : static_cast<unsigned char>(0);
        if (!fits || (tail & 0xC0u) != 0x80u)
            QelTools::Common::ThrowException("Failed to convert libxml string to ISO-8859-1 form.");
        latin1 += static_cast<char>(((lead & 0x03u) << 6) | (tail & 0x3Fu));
    }
    return latin1;
}

std::string ToUtf8(std::string_view latin1) {
    std::string utf8;
    utf8.reserve(latin1.size());
    for (const char c : latin1) {
        const auto code = static_cast<unsigned char>(c);
        if (HasHighBit(c)) {
            utf8 += static_cast<char>(0xC0u | (code >> 6));
            utf8 += static_cast<char>(0x80u | (code & 0x3Fu));
        } else {
            utf8 += c;
        }
    }
    return utf8;
}

}  // namespace VokEncoding
