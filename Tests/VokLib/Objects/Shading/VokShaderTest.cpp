#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Shading/VokMaterial.h>
#include <VokLib/Objects/Shading/VokShader.h>
#include <VokLib/Objects/Shading/VokTexture.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

constexpr const char* kTexture = R"(<texture name="t" uri="a.dds"></texture>)";

TEST(Shader, KeepsTextureBindingsAlone) {
    EXPECT_EQ(Rewritten<VokShader>(std::string(kTexture) +
                                   R"(<shader name="s">
<binding tag="diffuse" type="texture" source="|t" />
<binding tag="pos" type="geometry" dataset="position" />
<binding tag="gloss" type="constant" count="2">1 2</binding>
<customData><attribute name="n" type="int" default="0" value="3"/></customData>
</shader>)"),
              "<shader name=\"s\">\n<binding tag=\"diffuse\" type=\"texture\" source=\"|t\" />\n"
              "<customData>\n<attribute name=\"n\" type=\"int\" default=\"0\" "
              "value=\"3\">\n</attribute>\n"
              "</customData>\n</shader>");
}

TEST(Shader, ATextureBindingWithoutTagTakesItsParameter) {
    Scene scene(
        std::string(kTexture) +
        R"(<shader name="s"><binding parameter="diffuse" type="texture" source="|t"/></shader>)");
    EXPECT_EQ(scene.First<VokShader>().GetBindings().GetBinding(0).tag, "diffuse");
    const auto& binding =
        static_cast<const TextureBinding&>(scene.First<VokShader>().GetBindings().GetBinding(0));
    EXPECT_EQ(binding.source.GetTarget(), &scene.First<VokTexture>());
}

TEST(Shader, ABindingWithoutWhatItNeedsIsRefused) {
    const Failure missing{"Missing attribute in parse", "|s"};
    EXPECT_EQ(LoadFailure(R"(<shader name="s"><binding tag="a" type="texture"/></shader>)"),
              missing);
    EXPECT_EQ(LoadFailure(R"(<shader name="s"><binding tag="a" type="geometry"/></shader>)"),
              missing);
    EXPECT_EQ(LoadFailure(R"(<shader name="s"><binding tag="a" type="constant"/></shader>)"),
              missing);
    EXPECT_EQ(LoadFailure(R"(<shader name="s"><binding tag="a"/></shader>)"), missing);
    EXPECT_EQ(LoadFailure(R"(<shader name="s"><binding tag="a" type="Texture"/></shader>)"),
              (Failure{"Binding type string invalid", "|s"}));
}

TEST(Shader, AConstantHasOneToFourElements) {
    const Failure wrong{"Invalid number of elements specified for constant binding", "|m"};
    EXPECT_EQ(LoadFailure(
                  R"(<material name="m"><binding tag="a" type="constant" count="0"/></material>)"),
              wrong);
    EXPECT_EQ(LoadFailure(
                  R"(<material name="m"><binding tag="a" type="constant" count="5"/></material>)"),
              wrong);
    Scene scene(
        R"(<material name="m"><binding tag="a" type="constant" count="4">1 2 3.5 -4</binding></material>)");
    const auto& constant = static_cast<const ConstBinding&>(
        scene.First<VokMaterial>().GetConstantBindings().GetBinding(0));
    EXPECT_EQ(constant.values, (std::vector<float>{1, 2, 3.5f, -4}));
}

TEST(Shader, ABindingPastTheLastIsOutOfRange) {
    Scene scene(R"(<shader name="s"/>)");
    EXPECT_EQ(FailureOf([&] { scene.First<VokShader>().GetBindings().GetBinding(0); }).text,
              "Binding index out of range");
}

}  // namespace

}  // namespace SceneTest
