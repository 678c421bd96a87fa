#include "ReadBack.h"

#include "FailureText.h"
#include "MarkupFault.h"

#include <VokLib/Links/VokPath.h>
#include <VokLib/Objects/Constraints/VokAimConstraint.h>
#include <VokLib/Text/VokAttributes.h>
#include <VokLib/Text/VokDocumentFile.h>
#include <VokLib/Tree/ThrowVokException.h>
#include <VokLib/Tree/VokCast.h>
#include <VokLib/Tree/VokItHierarchy.h>
#include <VokLib/Tree/VokNode.h>
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

bool HasSameBits(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}
bool HasSameBits(const auto& a, const auto& b) {
    return HasSameBits(a.x, b.x) && HasSameBits(a.y, b.y) && HasSameBits(a.z, b.z);
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

/// True where a bake would see the sign of a zero that was not written.
bool LosesSign(const VokObj& object, const VokObj& readBack) {
    if (!object.IsA(VokNode::TypeId())) return false;
    const auto& before = static_cast<const VokNode&>(object);
    const auto& after = static_cast<const VokNode&>(readBack);
    return !(HasSameBits(before.translate, after.translate) &&
             HasSameBits(before.rotation, after.rotation) &&
             HasSameBits(before.rotationAxis, after.rotationAxis) &&
             HasSameBits(before.shear, after.shear) &&
             HasSameBits(before.rotatePivot, after.rotatePivot) &&
             HasSameBits(before.rotatePivotTranslation, after.rotatePivotTranslation) &&
             HasSameBits(before.scalePivot, after.scalePivot) &&
             HasSameBits(before.scalePivotTranslation, after.scalePivotTranslation));
}

}  // namespace

void CheckMarkup(VokWorld& world) {
    OwnMarkup markup;
    for (VokItHierarchy it(&world); !it.AtEnd(); it.Next()) {
        const std::string fault = FindMarkupFault(markup.Of(*it.Current()));
        if (!fault.empty()) ThrowVokException("The format cannot hold " + fault, it.Current());
    }
}

LostSigns CheckReadBack(VokWorld& written, VokWorld& readBack) {
    LostSigns lost;
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
        if (LosesSign(object, *other.Current()) && lost.objects++ == 0)
            lost.firstPath = VokPath(&object).GetText();
    }
    if (!other.AtEnd())
        ThrowVokException("The written document would be read with a further object",
                          other.Current());
    if (written.GetUpAxis() != readBack.GetUpAxis())
        ThrowVokException("The written document would be read with another up axis");
    return lost;
}
