#include <VokLib/Tree/ParentEffect.h>

#include <VokLib/Base/VokEnumText.h>
#include <VokLib/Tree/ThrowVokException.h>

namespace {

constexpr VokEnumText<ParentEffect, 3> kTexts{{"normal", "scaleCompensate", "noInherit"}};

}  // namespace

ParentEffect ParseParentEffect(std::string_view text, const VokObj* object) {
    if (const auto effect = kTexts.Find(text)) return *effect;
    ThrowVokException("Invalid parent effect string.", object);
}

std::string_view GetParentEffectText(ParentEffect effect, const VokObj* object) {
    if (const auto text = kTexts.TextOf(effect)) return *text;
    ThrowVokException("Invalid parent effect enum.", object);
}
