#include "ReadBack.h"

#include "FailureText.h"
#include "MarkupFault.h"

#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokWorld.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <sstream>
#include <string_view>

namespace {

/// What an object writes of itself, without its children.
class OwnMarkup {
  public:
    OwnMarkup() {
        // A lack of memory comes out as such; a text that lacks something would be taken for what
        // was written.
        stream.exceptions(std::ios_base::badbit);
    }

    const std::string& Of(const VokObj& object) {
        stream.str({});
        attributes.Clear();
        object.WriteAttributes(attributes);
        VokDocumentFile file(stream);
        file.OpenTag(object.GetElementName(), attributes);
        object.WriteContents(file);
        object.WriteTail(file);
        file.CloseTag(object.GetElementName());
        return text = stream.str();
    }

  private:
    std::ostringstream stream;
    VokAttributes attributes;
    std::string text;
};

/// The piece of a line around a position, for a message.
std::string Excerpt(std::string_view text, std::size_t at) {
    constexpr std::size_t kAround = 40;
    const std::size_t lineStart = text.substr(0, at).rfind('\n') + 1;
    const std::size_t start = std::max(lineStart, at - std::min(at, kAround));
    const std::size_t lineEnd = std::min(text.find('\n', at), text.size());
    return "'" + ReadableText(text.substr(start, std::min(lineEnd, at + kAround) - start)) + "'";
}

[[noreturn]] void ThrowDifference(const VokObj& object, std::string_view written,
                                  std::string_view readBack) {
    const auto differing =
        std::mismatch(written.begin(), written.end(), readBack.begin(), readBack.end());
    const auto at = static_cast<std::size_t>(differing.first - written.begin());
    ThrowVokException("The written document would be read otherwise: " + Excerpt(written, at) +
                          " as " + Excerpt(readBack, at),
                      &object);
}

bool HasSameBits(const VokVector4& a, const VokVector4& b) {
    const auto bits = [](float number) { return std::bit_cast<std::uint32_t>(number); };
    return bits(a.x) == bits(b.x) && bits(a.y) == bits(b.y) && bits(a.z) == bits(b.z) &&
           bits(a.w) == bits(b.w);
}

/// What a bake takes from an object although the format has no place for it: an aim constraint
/// whose up object gives a position may have a global up vector, which is written with the others
/// alone.
void CheckBaked(const VokObj& object, const VokObj& readBack) {
    const auto* const before = ExactCast<VokAimConstraint>(&object);
    const auto* const after = ExactCast<VokAimConstraint>(&readBack);
    if (before == nullptr || after == nullptr) return;
    if (HasSameBits(before->globalUp, after->globalUp) ||
        before->upMethod != AimUpMethod::ObjectTranslation)
        return;
    ThrowVokException(
        "The written document would be baked otherwise: the format has no globalup beside an "
        "upobject whose transform is \"translate\"",
        &object);
}

}  // namespace

void CheckMarkup(VokWorld& world) {
    OwnMarkup markup;
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        const std::string fault = FindMarkupFault(markup.Of(*it.Current()));
        if (!fault.empty()) ThrowVokException("The format cannot hold " + fault, it.Current());
    }
}

void CheckReadBack(VokWorld& written, VokWorld& readBack) {
    OwnMarkup ours;
    OwnMarkup theirs;
    VokItHierarchy other(&readBack);
    for (VokItHierarchy it(&written); !it.AtEnd(); it.Next(), other.Next()) {
        const VokObj& object = *it.Current();
        if (other.AtEnd() || other.GetDepth() != it.GetDepth())
            ThrowVokException("The written document would be read without this object", &object);
        const std::string& before = ours.Of(object);
        const std::string& after = theirs.Of(*other.Current());
        if (before != after) ThrowDifference(object, before, after);
        CheckBaked(object, *other.Current());
    }
    if (!other.AtEnd())
        ThrowVokException("The written document would be read with a further object",
                          other.Current());
    if (written.GetUpAxis() != readBack.GetUpAxis())
        ThrowVokException("The written document would be read with another up axis");
}
