#include "FailureText.h"

#include <VokLib/Text/VokEncoding.h>

std::string FailureText(const FailurePlace& place, std::string_view words) {
    std::string text = place.file + ":";
    if (place.line > 0) {
        text += std::to_string(place.line) + ":";
        if (place.column > 0) text += std::to_string(place.column) + ":";
    }
    text.append(" error: ").append(words);
    if (!place.object.empty()) text += " (object " + ReadableText(place.object) + ")";
    return text;
}

std::string ReadableText(std::string_view documentText) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string readable;
    for (const char c : documentText) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isControl = byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
        if (isControl)
            readable.append("\\x").append({kDigits[byte >> 4], kDigits[byte & 15]});
        else
            readable += c;
    }
    return VokEncoding::ToUtf8(readable);
}
