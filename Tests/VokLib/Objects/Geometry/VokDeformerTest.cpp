#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Geometry/VokDeformer.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(Deformer, RoundTripsWithItsChildren) {
    const std::string deformer =
        "<deformer name=\"d\" target=\"|m\">\n<cluster name=\"c\">\n<node "
        "name=\"n\">\n</node>\n</cluster>\n<customData>\n<attribute name=\"k\" "
        "type=\"string\">v</attribute>\n</customData>\n</deformer>";
    EXPECT_EQ(Rewritten<VokDeformer>(R"(<mesh name="m"/>)" + deformer), deformer);
}

TEST(Deformer, NeedsItsTarget) {
    EXPECT_EQ(LoadFailure(R"(<deformer name="d"/>)"),
              (Failure{"Missing attribute in parse", "|d"}));
    EXPECT_EQ(LoadFailure(R"(<deformer name="d" target="|nowhere"/>)").text,
              "Unresolved VokObjLinks");
    EXPECT_EQ(Rewritten<VokDeformer>(R"(<deformer name="d" target=""/>)"),
              "<deformer name=\"d\" target=\"\">\n</deformer>");
}

}  // namespace

}  // namespace SceneTest
