// The baseline of update_runs: IdentityStages FILE COUNT parses a document whole and takes it COUNT
// times through a stylesheet that copies it, each result handed over in memory and its source
// freed.

#include <libxml/parser.h>
#include <libxslt/transform.h>
#include <libxslt/xsltutils.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

constexpr std::string_view kIdentity =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates select='@*|node()'/>"
    "</xsl:copy></xsl:template></xsl:stylesheet>";

xmlDocPtr Parse(std::FILE* file) {
    xmlParserCtxtPtr parser = xmlCreatePushParserCtxt(nullptr, nullptr, nullptr, 0, nullptr);
    xmlCtxtUseOptions(parser, XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_HUGE);
    constexpr std::size_t kBlockBytes = 0x100000;
    const auto block = std::make_unique_for_overwrite<char[]>(kBlockBytes);
    std::size_t size = 0;
    int code = 0;
    do {
        size = std::fread(block.get(), 1, kBlockBytes, file);
        code =
            xmlParseChunk(parser, block.get(), static_cast<int>(size), size < kBlockBytes ? 1 : 0);
    } while (code == 0 && size == kBlockBytes);
    xmlDocPtr document = parser->myDoc;
    xmlFreeParserCtxt(parser);
    return code == 0 ? document : nullptr;
}

}  // namespace

int main(int count, char** arguments) {
    std::FILE* const file = count == 3 ? std::fopen(arguments[1], "rb") : nullptr;
    if (file == nullptr) return 1;
    xmlDocPtr document = Parse(file);
    std::fclose(file);
    for (int left = std::atoi(arguments[2]); left > 0 && document != nullptr; --left) {
        xsltStylesheetPtr sheet = xsltParseStylesheetDoc(xmlReadMemory(
            kIdentity.data(), static_cast<int>(kIdentity.size()), nullptr, nullptr, 0));
        xmlDocPtr result = xsltApplyStylesheet(sheet, document, nullptr);
        xmlFreeDoc(document);
        xsltFreeStylesheet(sheet);
        document = result;
    }
    const bool isFine = document != nullptr && xmlDocGetRootElement(document) != nullptr;
    xmlFreeDoc(document);
    return isFine ? 0 : 1;
}
