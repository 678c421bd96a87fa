#include "Update/VokUpdateStatic.h"

#include <QelTools/Exception.h>

#include "Update/EmbeddedDocuments.h"

#include <libxml/parser.h>

#include <string_view>

namespace {

constexpr int kOptions = XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_NONET;

std::string_view EmbeddedText(const std::string& uri) {
    for (std::size_t row = 0; kEmbeddedUris[row] != nullptr; ++row)
        if (uri == kEmbeddedUris[row]) return kEmbeddedTexts[row];
    QelTools::Common::ThrowException(
        "File \"" + uri +
        "\" required by update process is not compiled into VokLib. This probably means that you "
        "are running an old version of a tool on a more recent .qeli file.");
}

XmlDocument ParseText(std::string_view text, const std::string& uri) {
    return XmlDocument(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), uri.c_str(), nullptr, kOptions));
}

}  // namespace

XmlDocument ParseUpdateDocument(const std::string& text, const std::string& uri) {
    XmlDocument document = ParseText(text, uri);
    if (document == nullptr) ThrowUpdateParseFailure("xml document", uri);
    return document;
}

XmlDocument VokUpdateStatic::LoadDocument(const std::string& uri) {
    return ParseUpdateDocument(std::string(EmbeddedText(uri)), uri);
}

XmlStylesheet VokUpdateStatic::LoadStylesheet(const std::string& uri) {
    XmlStylesheet sheet = CompileStylesheet(ParseText(EmbeddedText(uri), uri));
    if (sheet == nullptr) ThrowUpdateParseFailure("stylesheet", uri);
    return sheet;
}
