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

TEST(VokSpringConstraint, WritesWhatItReads) {
    ExpectRoundTrip<VokSpringConstraint>(
        "<stiffness>1.0</stiffness>\n<restLength>2.0</restLength>\n<damping>3.0</damping>\n");
    EXPECT_EQ(Minimal<VokSpringConstraint>(),
              Element("springConstraint",
                      "<stiffness>0.0</stiffness>\n<restLength>0.0</restLength>\n"
                      "<damping>0.0</damping>\n"));
}
