#include "VokLib/SceneTestTools.h"

#include <VokLib/Objects/Shading/VokLight.h>

#include <gtest/gtest.h>

namespace SceneTest {

namespace {

TEST(Light, RoundTripsWhole) {
    const std::string light =
        "<light name=\"l\" type=\"SpotLight\" castShadows=\"true\" hasAmbient=\"false\" "
        "hasDiffuse=\"true\" "
        "hasSpecular=\"true\" volumeShape=\"Cone\">\n<intensity>2.0</intensity>\n<colour>1.0 0.5 "
        "0.25</colour>\n"
        "<colourTexture>|t</colourTexture>\n<coneAngle>0.75</coneAngle>\n<penumbraAngle>0.125</"
        "penumbraAngle>\n"
        "<dropOff>1.5</dropOff>\n<decayRate>2.0</decayRate>\n<colourRamp numEntries=\"2\">\n"
        "<positions>0.0 1.0</positions>\n<colours>0.0 0.0 0.0 1.0 1.0 1.0</colours>\n"
        "<interpolationTypes>Linear Spline</interpolationTypes>\n</colourRamp>\n</light>";
    EXPECT_EQ(Rewritten<VokLight>(R"(<texture name="t" uri="a"/>)" + light), light);
}

TEST(Light, WritesWhatIsAlwaysWritten) {
    EXPECT_EQ(Rewritten<VokLight>(R"(<light name="l" type="AmbientLight"/>)"),
              "<light name=\"l\" type=\"AmbientLight\" castShadows=\"false\" hasAmbient=\"false\" "
              "hasDiffuse=\"false\" hasSpecular=\"false\">\n<intensity>0.0</intensity>\n"
              "<colour>0.0 0.0 0.0</colour>\n</light>");
}

TEST(Light, AnUnknownTypeFailsWhenWrittenAlone) {
    Scene scene(R"(<light name="l" type="Sun"/>)");
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokLight>()); }),
              (Failure{"Unknown light type", "|l"}));
}

TEST(Light, ALinkToWhatIsNoTextureIsNotWritten) {
    Scene scene(
        R"(<node name="t"/><light name="l" type="PointLight"><colourTexture>|t</colourTexture></light>)");
    EXPECT_EQ(Write(scene.First<VokLight>()).find("colourTexture"), std::string::npos);
}

TEST(Light, ARampOfUnequalLengthsFailsWhenItIsUsed) {
    Scene scene(
        R"(<light name="l" type="PointLight"><colourRamp numEntries="2"><positions>0 1</positions>
<colours>0 0 0 1 1 1</colours><interpolationTypes>Linear</interpolationTypes></colourRamp></light>)");
    EXPECT_EQ(FailureOf([&] { Write(scene.First<VokLight>()); }),
              (Failure{"ramp size mismatch", "|l"}));
    EXPECT_EQ(FailureOf([&] { scene.First<VokLight>().GetRampEntry(0); }).text,
              "ramp size mismatch");
    EXPECT_EQ(FailureOf([&] { scene.First<VokLight>().GetRampEntry(2); }).text,
              "index out of range");
}

TEST(Light, ARampsEntriesAreReadByIndex) {
    Scene scene(
        R"(<light name="l" type="PointLight"><colourRamp numEntries="2"><positions>0 1</positions>
<colours>0 0 0 1 2 3</colours><interpolationTypes>None Smooth</interpolationTypes></colourRamp></light>)");
    const VokLight::RampEntry entry = scene.First<VokLight>().GetRampEntry(1);
    EXPECT_EQ(entry.position, 1);
    EXPECT_EQ(entry.colour, (VokVector3{1, 2, 3}));
    EXPECT_EQ(entry.interpolation, VokLight::Interpolation::Smooth);
}

TEST(Light, ARampThatClaimsMoreThanItsDocumentIsRefused) {
    const Failure failure = LoadFailure(
        R"(<light name="l" type="PointLight"><colourRamp numEntries="2000000000"><colours>1</colours></colourRamp></light>)");
    EXPECT_NE(failure.text, "");
}

TEST(Light, EveryTypeAndShapeHasItsText) {
    for (const char* type : {"DirectionalLight", "PointLight", "SpotLight", "AreaLight",
                             "VolumeLight", "AmbientLight"})
        for (const char* shape : {"Box", "Sphere", "Cylinder", "Cone"}) {
            const std::string tag = "<light name=\"l\" type=\"" + std::string(type) +
                                    "\" castShadows=\"false\" hasAmbient=\"false\" "
                                    "hasDiffuse=\"false\" hasSpecular=\"false\" volumeShape=\"" +
                                    shape + "\"";
            EXPECT_TRUE(Rewritten<VokLight>(tag + "/>").starts_with(tag + ">"));
        }
}

TEST(Light, ShapesThatAreNoneOrUnknownAreNotWritten) {
    for (const char* shape : {"None", "box", ""})
        EXPECT_EQ(Rewritten<VokLight>(R"(<light name="l" type="PointLight" volumeShape=")" +
                                      std::string(shape) + "\"/>")
                      .find("volumeShape"),
                  std::string::npos);
}

TEST(Light, WithoutATypeItIsDirectional) {
    EXPECT_TRUE(Rewritten<VokLight>(R"(<light name="l"/>)")
                    .starts_with(R"(<light name="l" type="DirectionalLight")"));
}

TEST(Light, AnUnknownInterpolationIsRefused) {
    EXPECT_EQ(
        LoadFailure(
            R"(<light name="l" type="PointLight"><colourRamp numEntries="1"><interpolationTypes>linear</interpolationTypes></colourRamp></light>)"),
        (Failure{"Unknown ramp interpolation type \"linear\".", "|l"}));
}

TEST(Light, AListOfARampOutsideItIsUnknown) {
    EXPECT_EQ(LoadFailure(R"(<light name="l" type="PointLight"><positions>1</positions></light>)"),
              (Failure{"Unknown tag \"positions\"", "|l"}));
}

}  // namespace

}  // namespace SceneTest
