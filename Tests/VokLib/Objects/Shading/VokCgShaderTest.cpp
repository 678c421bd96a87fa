#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Shading/VokCgShader.h>
#include <VokLib/Objects/Shading/VokShader.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

constexpr const char* kTexture = R"(<texture name="t" uri="a.dds"></texture>)";

TEST(CgShader, RoundTrips) {
    const std::string shader =
        "<cgshader name=\"c\" url=\"a/b.cg\">\n<binding tag=\"d\" type=\"texture\" source=\"|t\" "
        "/>\n</cgshader>";
    EXPECT_EQ(Rewritten<VokCgShader>(kTexture + shader), shader);
    EXPECT_TRUE(
        Scene(R"(<cgshader name="c" url="u"/>)").First<VokCgShader>().IsA(VokShader::TypeId()));
}

}  // namespace

}  // namespace SceneTest
