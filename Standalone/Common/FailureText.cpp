#include "FailureText.h"

#include <VokLib/Text/VokEncoding.h>

namespace {

std::string PlacedText(const FailurePlace& place, std::string_view kind, std::string_view words) {
    std::string text = place.file + ":";
    if (place.line > 0) {
        text += std::to_string(place.line) + ":";
        if (place.column > 0) text += std::to_string(place.column) + ":";
    }
    text.append(" ").append(kind).append(": ").append(words);
    if (!place.object.empty()) text += " (object " + ReadableText(place.object) + ")";
    return text;
}

/// Bytes below 0x20, and those from 0x7F up to `end`, become \x0A.
std::string WithoutControls(std::string_view text, unsigned end) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string readable;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || (byte >= 0x7F && byte < end))
            readable.append("\\x").append({kDigits[byte >> 4], kDigits[byte & 15]});
        else
            readable += c;
    }
    return readable;
}

}  // namespace

std::string FailureText(const FailurePlace& place, std::string_view words) {
    return PlacedText(place, "error", words);
}

std::string WarningText(const FailurePlace& place, std::string_view words) {
    return PlacedText(place, "warning", words);
}

std::string ReadableText(std::string_view documentText) {
    return VokEncoding::ToUtf8(WithoutControls(documentText, 0xA0));
}

std::string ReadableName(std::string_view name) {
    return WithoutControls(name, 0x80);
}
