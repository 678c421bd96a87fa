#include <VokLib/Base/RotationOrder.h>

#include <VokLib/Base/VokEnumText.h>

namespace {

constexpr VokEnumText<RotationOrder, 6> kTexts{{"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"}};

}  // namespace

std::optional<RotationOrder> FindRotationOrder(std::string_view text) {
    return kTexts.Find(text);
}

std::string_view GetRotationOrderText(RotationOrder order) {
    return kTexts.TextOf(order).value_or(kTexts.texts[0]);
}
