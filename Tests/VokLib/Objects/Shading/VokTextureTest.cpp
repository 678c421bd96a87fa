#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Shading/VokTexture.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(Texture, WritesItsElementsBehindChildrenAndCustomData) {
    const std::string texture =
        "<texture name=\"t\" uri=\"a.dds\">\n<node name=\"n\">\n</node>\n<customData>\n"
        "<attribute name=\"k\" type=\"string\">v</attribute>\n</customData>\n<wrap u=\"false\" "
        "v=\"true\" />\n"
        "<repeat u=\"2.0\" v=\"1.0\" />\n<rotate angle=\"0.5\" />\n</texture>";
    EXPECT_EQ(Rewritten<VokTexture>(texture), texture);
}

TEST(Texture, DefaultsWriteNothing) {
    EXPECT_EQ(
        Rewritten<VokTexture>(R"(<texture name="t" uri="a"><wrap/><repeat/><rotate/></texture>)"),
        "<texture name=\"t\" uri=\"a\">\n</texture>");
}

TEST(Texture, NeedsItsFile) {
    EXPECT_EQ(LoadFailure(R"(<texture name="t"/>)"), (Failure{"Missing attribute in parse", "|t"}));
}

}  // namespace

}  // namespace SceneTest
