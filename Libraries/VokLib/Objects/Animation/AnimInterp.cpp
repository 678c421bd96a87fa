#include <VokLib/Objects/Animation/AnimInterp.h>

#include <VokLib/Base/VokEnumText.h>

namespace {

constexpr VokEnumText<AnimInterp, 10> kTexts{{"Timestep", "Linear", "Flat", "Smooth", "Tangent",
                                              "WTangent", "SplitTangent", "WSplitTangent",
                                              "QELCurve", "QELHermite"}};

}  // namespace

std::optional<AnimInterp> FindAnimInterp(std::string_view text) {
    return kTexts.Find(text);
}

std::string_view GetAnimInterpText(AnimInterp interp) {
    return kTexts.TextOf(interp).value_or(std::string_view());
}
