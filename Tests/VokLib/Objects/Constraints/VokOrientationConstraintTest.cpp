#include <VokLib/Objects/Constraints/VokOrientationConstraint.h>
#include <VokLib/Objects/Constraints/VokScaleConstraint.h>
#include <VokLib/Objects/Constraints/VokSpringConstraint.h>
#include <VokLib/Objects/Constraints/VokTranslationConstraint.h>

#include <gtest/gtest.h>

#include "VokLib/SceneTestTools.h"

using namespace SceneTest;

namespace {

constexpr std::string_view kNodes = R"(<scene><node name="a"/><node name="b"/></scene>)";
constexpr std::string_view kTarget = "<target name=\"||b\" weight=\"0.5\" />\n";

std::string Element(const std::string& type, const std::string& content) {
    return "<" + type + " name=\"k\" constrain=\"||a\">\n" + content + "</" + type + ">";
}

template <class T>
void ExpectRoundTrip(const std::string& content) {
    const std::string text = Element(std::string(T::kElementName), content + std::string(kTarget));
    EXPECT_EQ(Rewritten<T>(std::string(kNodes) + text), text);
}

template <class T>
std::string Minimal() {
    return Rewritten<T>(std::string(kNodes) + Element(std::string(T::kElementName), ""));
}

}  // namespace

TEST(VokOrientationConstraint, WritesWhatItReads) {
    for (const char* method : {"noFlip", "average", "shortest", "longest", "cache"})
        ExpectRoundTrip<VokOrientationConstraint>(
            "<rotEul rotOrd=\"zxy\">1.0 2.0 3.0</rotEul>\n<orientInterpolation>" +
            std::string(method) + "</orientInterpolation>\n");
}

TEST(VokOrientationConstraint, BothElementsAreAlwaysWritten) {
    EXPECT_EQ(Minimal<VokOrientationConstraint>(),
              Element("orientationConstraint",
                      "<rotEul rotOrd=\"xyz\">0.0 0.0 0.0</rotEul>\n"
                      "<orientInterpolation>average</orientInterpolation>\n"));
}

TEST(VokOrientationConstraint, UnknownTextsAreRefused) {
    EXPECT_EQ(LoadFailure(Element("orientationConstraint",
                                  "<orientInterpolation>slerp</orientInterpolation>")),
              (Failure{"Unknown orient interpolation method \"slerp\".", "|k"}));
    EXPECT_EQ(LoadFailure(Element("orientationConstraint", R"(<rotEul rotOrd="XYZ"/>)")),
              (Failure{"Unknown rotation order \"XYZ\".", "|k"}));
    EXPECT_EQ(
        FailureOf([] { GetOrientInterpolationText(static_cast<OrientInterpolation>(5)); }).text,
        "Unknown OrientInterpolation enum value.");
}
