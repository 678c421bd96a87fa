#include "Update/PlainWriter.h"

#include "Update/XmlHandles.h"

#include <array>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kBufferBytes = 64u << 10;

/// What stands for each character; null for itself.
using Escapes = std::array<const char*, 256>;

constexpr Escapes MakeEscapes(bool inText) {
    Escapes escapes{};
    escapes['"'] = "&quot;";
    escapes['&'] = "&amp;";
    escapes['\''] = "&apos;";
    if (inText) {
        escapes['<'] = "&lt;";
        escapes['>'] = "&gt;";
    }
    return escapes;
}
constexpr Escapes kAttributeEscapes = MakeEscapes(false);
constexpr Escapes kTextEscapes = MakeEscapes(true);

class PlainWriter {
  public:
    explicit PlainWriter(std::ostream& target) : out(target) {}

    void Put(std::string_view text) {
        if (buffer.size() + text.size() > kBufferBytes) Flush();
        if (text.size() > kBufferBytes)
            out.write(text.data(), static_cast<std::streamsize>(text.size()));
        else
            buffer += text;
    }

    void PutEscaped(std::string_view text, const Escapes& escapes) {
        std::size_t from = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            const char* const escape = escapes[static_cast<unsigned char>(text[at])];
            if (escape == nullptr) continue;
            Put(text.substr(from, at - from));
            Put(escape);
            from = at + 1;
        }
        Put(text.substr(from));
    }

    void PutStart(const xmlNode& element) {
        Put("<");
        Put(FromXml(element.name));
        for (const xmlAttr* attribute = element.properties; attribute != nullptr;
             attribute = attribute->next)
            PutAttribute(*attribute);
        for (const xmlNs* space = element.nsDef; space != nullptr; space = space->next)
            PutDeclaration(*space);
        Put(element.children == nullptr ? "/>" : ">");
    }

    void PutEnd(const xmlNode& element) {
        Put("</");
        Put(FromXml(element.name));
        Put(">");
    }

    void Flush() {
        out.write(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        buffer.clear();
    }

  private:
    void PutAttribute(const xmlAttr& attribute) {
        Put(" ");
        Put(FromXml(attribute.name));
        Put("=\"");
        for (const xmlNode* text = attribute.children; text != nullptr; text = text->next)
            if (text->type == XML_TEXT_NODE) PutEscaped(FromXml(text->content), kAttributeEscapes);
        Put("\"");
    }

    void PutDeclaration(const xmlNs& space) {
        Put(" xmlns");
        if (space.prefix != nullptr) {
            Put(":");
            Put(FromXml(space.prefix));
        }
        Put("=\"");
        Put(FromXml(space.href));
        Put("\"");
    }

    std::ostream& out;
    std::string buffer;
};

}  // namespace

void WritePlain(std::ostream& out, const xmlDoc& document) {
    PlainWriter writer(out);
    writer.Put("<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n");
    const xmlNode* node = document.children;
    while (node != nullptr) {
        if (node->type == XML_TEXT_NODE) writer.PutEscaped(FromXml(node->content), kTextEscapes);
        if (node->type == XML_ELEMENT_NODE) {
            writer.PutStart(*node);
            if (node->children != nullptr) {
                node = node->children;
                continue;
            }
        }
        while (node->next == nullptr && node->parent != nullptr &&
               node->parent->type == XML_ELEMENT_NODE) {
            node = node->parent;
            writer.PutEnd(*node);
        }
        node = node->next;
    }
    writer.Flush();
}
