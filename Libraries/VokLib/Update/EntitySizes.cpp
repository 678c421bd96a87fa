#include "Update/EntitySizes.h"

#include "Update/XmlHandles.h"

#include <libxml/entities.h>

#include <limits>
#include <map>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kTooMuch = std::numeric_limits<std::size_t>::max();
constexpr int kMostNested = 40;
/// Even an empty entity costs something.
constexpr std::size_t kReferenceBytes = 64;

class Sizes {
  public:
    std::size_t Of(const xmlEntity& entity, int nested) {
        if (nested > kMostNested) return kTooMuch;
        const auto [known, isNew] = sizes.try_emplace(&entity, kTooMuch);
        if (!isNew) return known->second;
        const std::string_view text = FromXml(entity.content);
        std::size_t size = text.size() + kReferenceBytes;
        for (std::size_t at = text.find('&'); at != std::string_view::npos;
             at = text.find('&', at + 1)) {
            // In comments and character data it may stand alone, and then no name is known.
            const std::size_t end = text.find_first_of(";&", at + 1);
            if (end == std::string_view::npos) break;
            const std::string name(text.substr(at + 1, end - at - 1));
            const xmlEntity* const inner = xmlGetDocEntity(entity.doc, ToXml(name.c_str()));
            // The content of predefined ones, "&", is no reference.
            if (inner == nullptr || inner->etype == XML_INTERNAL_PREDEFINED_ENTITY) continue;
            const std::size_t more = Of(*inner, nested + 1);
            size = size > kTooMuch - more ? kTooMuch : size + more;
        }
        return sizes[&entity] = size;
    }

  private:
    std::map<const xmlEntity*, std::size_t> sizes;
};

}  // namespace

std::size_t ReplacedSize(const xmlEntity& entity) {
    return Sizes().Of(entity, 0);
}
