#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Shading/VokCgShader.h>
#include <VokLib/Objects/Shading/VokMaterial.h>
#include <VokLib/Objects/Shading/VokTexture.h>
#include <VokLib/Tree/VokDependencies.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

constexpr const char* kTexture = R"(<texture name="t" uri="a.dds"></texture>)";

TEST(Material, WritesStateThenGeometryConstantsAndTextures) {
    const std::string material =
        "<material name=\"m\" url=\"x.mat\" mat=\"skin\" frompreset=\"true\" preseturl=\"p.mat\" "
        "preset=\"wet\">\n"
        "<renderstate overriden=\"true\">\n"
        "<alphablend enabled=\"true\" sourceblend=\"One\" destblend=\"SrcAlphaSaturate\" />\n"
        "<alphatest enabled=\"true\" alphafunc=\"Always\" alpharef=\"0.25\" />\n"
        "<zwrite enabled=\"false\" />\n"
        "<ztest enabled=\"false\" ztestfunc=\"Less\" />\n"
        "<backfaceculling enabled=\"false\" />\n"
        "</renderstate>\n"
        "<binding tag=\"pos\" type=\"geometry\" dataset=\"position\" streamtype=\"float3\" "
        "modifiers=\"skinned\" />\n"
        "<binding tag=\"uv\" type=\"geometry\" dataset=\"uv0\" />\n"
        "<binding tag=\"gloss\" type=\"constant\" count=\"2\">1.0 0.5</binding>\n"
        "<binding tag=\"diffuse\" type=\"texture\" source=\"|t\" />\n"
        "</material>";
    EXPECT_EQ(Rewritten<VokMaterial>(kTexture + material), material);
    const std::string shuffled =
        "<material name=\"m\" url=\"x.mat\" mat=\"skin\" frompreset=\"true\" preseturl=\"p.mat\" "
        "preset=\"wet\">"
        "<binding type=\"texture\" tag=\"diffuse\" source=\"|t\"/>"
        "<binding tag=\"gloss\" type=\"constant\" count=\"2\"> 1 .5 </binding>"
        "<binding tag=\"pos\" type=\"geometry\" dataset=\"position\" streamtype=\"float3\" "
        "modifiers=\"skinned\"/>"
        "<binding tag=\"uv\" type=\"geometry\" dataset=\"uv0\" streamtype=\"\"/>"
        "<renderstate overriden=\"1\"><backfaceculling/><ztest ztestfunc=\"Less\"/><zwrite "
        "enabled=\"0\"/>"
        "<alphatest enabled=\"1\" alphafunc=\"Always\" alpharef=\".25\"/>"
        "<alphablend enabled=\"1\" sourceblend=\"One\" "
        "destblend=\"SrcAlphaSaturate\"/></renderstate></material>";
    EXPECT_EQ(Rewritten<VokMaterial>(kTexture + shuffled), material);
}

TEST(Material, DefaultsWriteNoAttributeAndNoState) {
    EXPECT_EQ(Rewritten<VokMaterial>(R"(<material name="m"/>)"),
              "<material name=\"m\">\n</material>");
    Scene scene(R"(<material name="m"><renderstate overriden="false"/></material>)");
    EXPECT_TRUE(scene.First<VokMaterial>().renderState.present);
    EXPECT_EQ(Write(scene.First<VokMaterial>()), "<material name=\"m\">\n</material>");
}

TEST(Material, AnOverridenStateIsWrittenByItself) {
    EXPECT_EQ(
        Rewritten<VokMaterial>(R"(<material name="m"><renderstate overriden="true"/></material>)"),
        "<material name=\"m\">\n<renderstate overriden=\"true\">\n</renderstate>\n</material>");
}

TEST(Material, AnElementWithoutEnabledIsOffButForZWrite) {
    Scene scene(
        R"(<material name="m"><renderstate><alphablend/><alphatest/><zwrite/><ztest/><backfaceculling/>
</renderstate></material>)");
    const VokRenderState& state = scene.First<VokMaterial>().renderState;
    EXPECT_FALSE(state.alphaBlend.enabled);
    EXPECT_FALSE(state.alphaTest.enabled);
    EXPECT_TRUE(state.zWrite);
    EXPECT_FALSE(state.zTest.enabled);
    EXPECT_FALSE(state.backfaceCulling);
    EXPECT_EQ(state.alphaBlend.sourceBlend, 4u);
    EXPECT_EQ(state.alphaBlend.destBlend, 5u);
    EXPECT_EQ(state.alphaTest.alphaFunc, 1u);
    EXPECT_EQ(state.alphaTest.alphaRef, 0.5f);
    EXPECT_EQ(state.zTest.zTestFunc, 5u);
}

TEST(Material, ANameInNoTableIsPastItsEndAndNoError) {
    std::string written;
    {
        Scene scene(
            R"(<material name="m"><renderstate><alphablend sourceblend="one" destblend="Zero"/>
<ztest enabled="1" ztestfunc="Never!"/></renderstate></material>)");
        EXPECT_EQ(scene.First<VokMaterial>().renderState.alphaBlend.sourceBlend, 11u);
        EXPECT_EQ(scene.First<VokMaterial>().renderState.zTest.zTestFunc, 8u);
        written = Write(scene.First<VokMaterial>());
    }
    EXPECT_EQ(Rewritten<VokMaterial>(written), written);
}

TEST(Material, EveryBlendAndCompareNameRoundTrips) {
    const auto roundTrips = [](const std::string& element) {
        const std::string material = "<material name=\"m\">\n<renderstate overriden=\"false\">\n" +
                                     element + "\n</renderstate>\n</material>";
        EXPECT_EQ(Rewritten<VokMaterial>(material), material);
    };
    for (const std::string name :
         {"One", "Zero", "SrcColour", "OneMinusSrcColour", "SrcAlpha", "OneMinusSrcAlpha",
          "DstAlpha", "OneMinusDstAlpha", "DstColour", "OneMinusDstColour", "SrcAlphaSaturate"})
        roundTrips("<alphablend enabled=\"true\" sourceblend=\"" + name + "\" destblend=\"" + name +
                   "\" />");
    for (const std::string name : {"Less", "Greater", "Equal", "NotEqual", "Never",
                                   "LessThanOrEqual", "GreaterThanOrEqual", "Always"}) {
        roundTrips("<alphatest enabled=\"true\" alphafunc=\"" + name + "\" alpharef=\"0.5\" />");
        roundTrips("<ztest enabled=\"false\" ztestfunc=\"" + name + "\" />");
    }
}

/// Puts "moved/" in front of every name.
struct Mover : VokUpdateDependencies {
    void Translate(std::string& out, const std::string& name, const VokObj*) override {
        out = "moved/" + name;
    }
};

TEST(Material, ListsBothFilesRewritesOneAndVisitsNoChildren) {
    Scene scene(
        R"(<material name="m" url="x.mat" preseturl="p.mat"><texture name="t" uri="inside.dds"/>
<customData><attribute name="f" type="filename">own.txt</attribute></customData></material>
<material name="empty"/><cgshader name="c" url="c.cg"><texture name="t" uri="below.dds"/></cgshader>
<cgshader name="none"/>)");
    VokDependencies files;
    CollectDependencies(scene.world, files);
    EXPECT_EQ(files.GetFiles(), (std::vector<std::string>{"x.mat", "p.mat", "c.cg", "below.dds"}));
    Mover mover;
    RewriteDependencies(scene.world, mover);
    EXPECT_EQ(scene.At<VokMaterial>("|m").url, "moved/x.mat");
    EXPECT_EQ(scene.At<VokMaterial>("|m").presetUrl, "p.mat");
    EXPECT_EQ(scene.At<VokTexture>("|m|t").uri, "inside.dds");
    EXPECT_EQ(scene.At<VokMaterial>("|empty").url, "");
    EXPECT_EQ(scene.At<VokCgShader>("|c").url, "moved/c.cg");
    EXPECT_EQ(scene.At<VokTexture>("|c|t").uri, "moved/below.dds");
    EXPECT_EQ(scene.At<VokCgShader>("|none").url, "");
}

}  // namespace

}  // namespace SceneTest
