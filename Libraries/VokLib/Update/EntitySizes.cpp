#include "Update/EntitySizes.h"

#include "Update/Saturating.h"
#include "Update/XmlHandles.h"

#include <libxml/entities.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

namespace {

/// Beyond this an entity counts as too long,
constexpr int kMostNested = 40;
/// and beyond this it is not looked into: the parser refuses it.
constexpr int kMostReadNested = 1024;
/// Even an empty entity costs something.
constexpr std::size_t kReferenceBytes = 64;

constexpr std::string_view kDeclaration = "xmlns";

class Sizes {
  public:
    EntitySize Of(const xmlEntity& entity, int nested);

  private:
    std::map<const xmlEntity*, EntitySize> sizes;
};

/// Reads the content of one entity, in which references to characters are characters already.
class Content {
  public:
    Content(Sizes& all, const xmlEntity& content, int nestedIn)
        : sizes(all), entity(content), nested(nestedIn), text(FromXml(content.content)) {}

    EntitySize Measure() {
        size.bytes = text.size() + kReferenceBytes;
        for (std::size_t at = text.find_first_of("<&"); at < text.size();
             at = text.find_first_of("<&", at)) {
            if (text[at] == '&')
                at = AddReference(at);
            else
                at = AddMarkup(at);
        }
        return size;
    }

  private:
    void AddName() {
        size.names = SumOf(size.names, 1);
        size.depths = SumOf(size.depths, depth);
    }

    std::size_t AddReference(std::size_t at) {
        const std::size_t end = text.find(';', at);
        const std::string name(text.substr(at + 1, end - at - 1));
        const xmlEntity* const inner = xmlGetDocEntity(entity.doc, ToXml(name.c_str()));
        // The content of predefined ones, "&", is no reference.
        if (inner == nullptr || inner->etype == XML_INTERNAL_PREDEFINED_ENTITY) return at + 1;
        const EntitySize more = sizes.Of(*inner, nested + 1);
        size.bytes = SumOf(size.bytes, more.bytes);
        size.names = SumOf(size.names, more.names);
        size.depths = SumOf(size.depths, SumOf(more.depths, ProductOf(more.names, depth)));
        size.deepest = std::max(size.deepest, SumOf(depth, more.deepest));
        size.spaces = SumOf(size.spaces, more.spaces);
        return at + 1;
    }

    /// Returns what stands behind the markup.
    std::size_t AddMarkup(std::size_t at) {
        const std::string_view rest = text.substr(at);
        if (rest.substr(0, 4) == "<!--") return Behind("-->", at + 4);
        if (rest.substr(0, 2) == "<!") return Behind("]]>", at);
        if (rest.substr(0, 2) == "<?") return Behind("?>", at);
        if (rest.substr(0, 2) == "</") {
            depth -= depth == 0 ? 0 : 1;
            return Behind(">", at);
        }
        return AddTag(at + 1);
    }

    std::size_t AddTag(std::size_t at) {
        AddName();
        size.deepest = std::max(size.deepest, ++depth);
        for (char quote = 0; at < text.size(); ++at) {
            const char byte = text[at];
            if (byte == '&')
                AddReference(at);
            else if (quote != 0)
                quote = byte == quote ? '\0' : quote;
            else if (byte == '"' || byte == '\'')
                quote = byte;
            else if (byte == '=')
                AddName();
            else if (text.compare(at, kDeclaration.size(), kDeclaration) == 0)
                size.spaces = SumOf(size.spaces, 1);
            else if (byte == '>') {
                depth -= text[at - 1] == '/' ? 1 : 0;
                return at + 1;
            }
        }
        return at;
    }

    std::size_t Behind(std::string_view end, std::size_t from) const {
        const std::size_t at = text.find(end, from);
        return at == std::string_view::npos ? text.size() : at + end.size();
    }

    Sizes& sizes;
    const xmlEntity& entity;
    int nested;
    std::string_view text;
    std::size_t depth = 0;
    EntitySize size;
};

EntitySize Sizes::Of(const xmlEntity& entity, int nested) {
    constexpr EntitySize kUnknown{kGreatest, 0, 0, 0, 0};
    if (nested > kMostReadNested) return kUnknown;
    const auto [known, isNew] = sizes.try_emplace(&entity, kUnknown);
    if (isNew) {
        const EntitySize measured = Content(*this, entity, nested).Measure();
        sizes[&entity] = measured;
    }
    EntitySize size = sizes[&entity];
    if (nested > kMostNested) size.bytes = kGreatest;
    return size;
}

}  // namespace

EntitySize ReplacedSize(const xmlEntity& entity) {
    return Sizes().Of(entity, 0);
}
