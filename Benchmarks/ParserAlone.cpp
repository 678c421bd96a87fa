// The baseline of the whole runs: ParserAlone FILE reads a document as the reader does, push mode
// and blocks of one mebibyte, with three callbacks that do nothing. Exit status 0 when the parser
// accepts it.

#include <libxml/parser.h>

#include <cstdio>
#include <memory>

namespace {

void OnStart(void*, const xmlChar*, const xmlChar**) {}
void OnEnd(void*, const xmlChar*) {}
void OnCharacters(void*, const xmlChar*, int) {}

}  // namespace

int main(int count, char** arguments) {
    std::FILE* const file = count == 2 ? std::fopen(arguments[1], "rb") : nullptr;
    if (file == nullptr) return 1;
    std::setvbuf(file, nullptr, _IONBF, 0);
    xmlInitParser();
    xmlSAXHandler handlers{};
    handlers.startElement = OnStart;
    handlers.endElement = OnEnd;
    handlers.characters = OnCharacters;
    xmlParserCtxtPtr parser = xmlCreatePushParserCtxt(&handlers, &handlers, nullptr, 0, nullptr);
    constexpr std::size_t kBlockBytes = 0x100000;
    const auto block = std::make_unique_for_overwrite<char[]>(kBlockBytes);
    std::size_t size = 0;
    int code = 0;
    do {
        size = std::fread(block.get(), 1, kBlockBytes, file);
        code =
            xmlParseChunk(parser, block.get(), static_cast<int>(size), size < kBlockBytes ? 1 : 0);
    } while (code == 0 && size == kBlockBytes);
    std::fclose(file);
    xmlFreeParserCtxt(parser);
    xmlCleanupParser();
    return code == 0 ? 0 : 1;
}
