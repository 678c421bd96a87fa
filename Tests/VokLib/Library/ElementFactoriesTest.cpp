#include "VokLib/SceneTestTools.h"

#include <VokLib/Tree/VokDependencies.h>
#include <VokLib/Tree/VokFactory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace SceneTest {
namespace {

/// A whole element of one type named "it", as it is written, but for the child and the custom data
/// that each gets.
struct Whole {
    const char* type;
    const char* startTag;  ///< its attributes
    const char* contents;  ///< its own elements, each behind a line end
    /// An expression starts each element of its custom data a second time at its end.
    bool keepsCustomData = true;
};

/// What the elements refer to.
constexpr std::string_view kReferred =
    R"(<node name="a"/><joint name="b"/><texture name="t" uri="a.dds"/>)";

// One row for each type: kept in the order of the names.
constexpr Whole kWholes[] = {
    {"aimConstraint", R"( name="it" constrain="|a")",
     "\n<offset rotOrd=\"zyx\">1.0 2.0 3.0</offset>\n<aim>1.0 0.0 0.0</aim>\n<up>0.0 1.0 0.0</up>\n"
     "<globalup>0.0 1.0 0.0</globalup>\n<target name=\"|b\" weight=\"0.5\" />"},
    {"anim", R"( name="it" target="|b")", ""},
    {"animChannel", R"( name="it" channel="translateX" inputObject="||a" inputChannel="rotateY")",
     "\n<animData interp=\"SplitTangent\" numKeys=\"2\" keyStride=\"2\" timeOffset=\"0.5\">\n"
     "<keyValues>1.0 2.0 3.0 4.0 </keyValues>\n<keyTimes>0.0 1.0 </keyTimes>\n"
     "<tangents>0.0 1.0 2.0 3.0 </tangents>\n<tangents>4.0 5.0 6.0 7.0 </tangents>\n</animData>"},
    {"animDiscontinuities", R"( name="it" keyStride="2")",
     "\n<corner time=\"0.5\" />\n<step time=\"1.0\">\n<before>1.0 2.0</before>\n"
     "<after>3.0 4.0</after>\n</step>"},
    {"animclip", R"( name="it")", ""},
    {"blend", R"( name="it" target="|a" channel="translateX")",
     "\n<input value=\"0.5\" weight=\"0.25\" />\n<input value=\"1.0\" weight=\"2.0\" />"},
    {"blendshape", R"( name="it" controller="|a")",
     "\n<target weightIndex=\"1\">\n<blendtarget name=\"x\">\n<diff name=\"d\">\n"
     "<indices count=\"1\">4</indices>\n<deltas count=\"3\">1.0 2.0 3.0</deltas>\n</diff>\n"
     "</blendtarget>\n</target>"},
    {"blendshapeController", R"( name="it")", "\n<weight weightName=\"w\">0.5</weight>"},
    {"blendtarget", R"( name="it")",
     "\n<diff name=\"d\">\n<indices count=\"1\">4</indices>\n"
     "<deltas count=\"3\">1.0 2.0 3.0</deltas>\n</diff>"},
    {"camera", R"( name="it")",
     "\n<nearClipPlane>1.0</nearClipPlane>\n<farClipPlane>2.0</farClipPlane>\n"
     "<focalLength>3.0</focalLength>\n<verticalFilmAperture>4.0</verticalFilmAperture>\n"
     "<horizontalFilmAperture>5.0</horizontalFilmAperture>\n<orthographic>1</orthographic>\n"
     "<orthographicWidth>6.0</orthographicWidth>"},
    {"cgshader", R"( name="it" url="x.cg")",
     "\n<binding tag=\"d\" type=\"texture\" source=\"|t\" />"},
    {"cluster", R"( name="it")", ""},
    {"deformer", R"( name="it" target="|a")", ""},
    {"expression", R"( name="it")",
     "\n<input object=\"|a\" channel=\"x\" />\n<output object=\"|b\" channel=\"y\" />\n"
     "<code>y &lt; x &amp;&amp; 1</code>",
     false},
    {"instance", R"( name="it" target="|a")", ""},
    {"joint", R"( name="it")",
     "\n<freedoms channels=\"XZ\" />\n<minrotation channels=\"XY\">1.0 2.0</minrotation>\n"
     "<maxrotation channels=\"Z\">3.0</maxrotation>\n"
     "<jointOrientEul rotOrd=\"yzx\">0.5 0.25 0.125</jointOrientEul>\n"
     "<scaleCompensate>0</scaleCompensate>\n<translate>1.0 2.0 3.0</translate>"},
    {"light",
     R"( name="it" type="AreaLight" castShadows="true" hasAmbient="true" hasDiffuse="false" )"
     R"(hasSpecular="true" volumeShape="Box")",
     "\n<intensity>1.0</intensity>\n<colour>1.0 0.5 0.25</colour>\n"
     "<colourTexture>|t</colourTexture>\n<coneAngle>0.5</coneAngle>\n<colourRamp "
     "numEntries=\"1\">\n<positions>0.5</positions>\n<colours>1.0 2.0 3.0</colours>\n"
     "<interpolationTypes>Smooth</interpolationTypes>\n</colourRamp>"},
    {"locator", R"( name="it")", "\n<localPosition>1.0 2.0 3.0</localPosition>"},
    {"lodgroup", R"( name="it")",
     "\n<thresholds count=\"2\">1.0 2.0</thresholds>\n<translate>1.0 2.0 3.0</translate>"},
    {"material", R"( name="it" url="x.mat" frompreset="true" preset="wet")",
     "\n<renderstate overriden=\"true\">\n<zwrite enabled=\"false\" />\n</renderstate>\n"
     "<binding tag=\"p\" type=\"geometry\" dataset=\"position\" />\n"
     "<binding tag=\"g\" type=\"constant\" count=\"2\">1.0 0.5</binding>\n"
     "<binding tag=\"d\" type=\"texture\" source=\"|t\" />"},
    {"mesh", R"( name="it")",
     "\n<vertexArray>\n<primitives type=\"TRIFANS\" count=\"1\" shader=\"|a\">\n"
     "<binding source=\"p\" />\n<sizes>3</sizes>\n<indices>0 1 2</indices>\n</primitives>\n"
     "<array name=\"p\" count=\"3\" stride=\"3\">1.0 2.0 3.0</array>\n"
     "<blindData name=\"b\" component=\"Edge\" numComponents=\"2\">\n"
     "<components>3 4</components>\n<attribute name=\"i\" type=\"Int\">5 6</attribute>\n"
     "</blindData>\n</vertexArray>"},
    {"motionPath",
     R"( name="it" constrain="|a" parameterisation="length" constrainOrientation="true" )"
     R"(curvePath="|b")",
     "\n<offset rotOrd=\"zxy\">1.0 2.0 3.0</offset>\n<aim>1.0 0.0 0.0</aim>\n<up>0.0 1.0 0.0</up>"},
    {"multiBlendTarget", R"( name="it")",
     "\n<blendStage interpolant=\"0.5\">\n<blendtarget name=\"x\">\n<diff name=\"d\">\n"
     "<indices count=\"0\">\n</indices>\n<deltas count=\"0\">\n</deltas>\n</diff>\n"
     "</blendtarget>\n</blendStage>"},
    {"node", R"( name="it" parentEffect="noInherit")",
     "\n<translate>1.0 2.0 3.0</translate>\n<rotEul rotOrd=\"zyx\">0.5 0.0 0.0</rotEul>\n"
     "<rotAxisEul rotOrd=\"xyz\">0.25 0.0 0.0</rotAxisEul>\n<scale>1.0 2.0 1.0</scale>\n"
     "<shear>0.5 0.0 0.0</shear>\n<scalePivot>1.0 0.0 0.0</scalePivot>\n"
     "<scalePivotTranslation>2.0 0.0 0.0</scalePivotTranslation>\n"
     "<rotatePivot>3.0 0.0 0.0</rotatePivot>\n"
     "<rotatePivotTranslation>4.0 0.0 0.0</rotatePivotTranslation>"},
    {"nurbs", R"( name="it")",
     "\n<surface uOrder=\"2\" vOrder=\"3\" uMin=\"0.0\" uMax=\"1.0\" vMin=\"0.0\" vMax=\"2.0\">\n"
     "<controlVertices numCVinU=\"1\" numCVinV=\"1\">1.0 2.0 3.0</controlVertices>\n"
     "<knotsInU numKnotsInU=\"1\">0.5</knotsInU>\n<knotsInV numKnotsInV=\"1\">0.25</knotsInV>\n"
     "</surface>"},
    {"nurbsCurve", R"( name="it" degree="3" form="closed")",
     "\n<points count=\"1\">1.0 2.0 3.0</points>\n<knots count=\"2\">0.0 1.0</knots>"},
    {"objset", R"( name="it" type="lod")", "\n<member path=\"|a\" membership=\"f[0]\" />"},
    {"orientationConstraint", R"( name="it" constrain="|a")",
     "\n<rotEul rotOrd=\"xzy\">1.0 2.0 3.0</rotEul>\n"
     "<orientInterpolation>average</orientInterpolation>\n<target name=\"|b\" weight=\"1.0\" />"},
    {"parentConstraint", R"( name="it" constrain="|a")",
     "\n<offset>\n<translation>1.0 2.0 3.0</translation>\n"
     "<rotEul rotOrd=\"xyz\">0.5 0.25 0.125</rotEul>\n</offset>\n"
     "<target name=\"|b\" weight=\"1.0\" />"},
    {"pmdataQEL", R"( name="it" target="|a")",
     "\n<vs count=\"1\">1</vs>\n<vt count=\"1\">2</vt>\n<faces count=\"1\">3</faces>\n"
     "<costs count=\"1\">0.5</costs>\n<splits count=\"1\">4</splits>\n"
     "<fixFaces count=\"1\">5</fixFaces>"},
    {"pose", R"( name="it" bindPose="1")",
     "\n<element target=\"|b\">\n<translate>1.0 2.0 3.0</translate>\n"
     "<rotEul rotOrd=\"yxz\">0.5 0.0 0.0</rotEul>\n<scale>1.0 2.0 1.0</scale>\n</element>"},
    {"primitive", R"( name="it" shader="|a")",
     "\n<cube width=\"1.0\" height=\"2.0\" depth=\"3.0\" />"},
    {"qelilocator", R"( name="it")",
     "\n<file uri=\"x.qeli\" />\n<localPosition>1.0 2.0 3.0</localPosition>"},
    {"reference", R"( name="it" uri="x.qeli" namespace="n")", ""},
    {"rigidBody", R"( name="it")", "\n<mass>2.0</mass>\n<geometry>|a</geometry>"},
    {"scaleConstraint", R"( name="it" constrain="|a")",
     "\n<offset>1.0 2.0 3.0</offset>\n<target name=\"|b\" weight=\"1.0\" />"},
    {"scene", R"( name="it")", "\n<translate>1.0 2.0 3.0</translate>"},
    {"shader", R"( name="it")", "\n<binding tag=\"d\" type=\"texture\" source=\"|t\" />"},
    {"skin", R"( name="it" type="linear")",
     "\n<influence target=\"|b\">\n<bindInverse>1.0 0.0 0.0 0.0 0.0 1.0 0.0 0.0 0.0 0.0 1.0 0.0 "
     "0.0 0.0 0.0 1.0</bindInverse>\n</influence>\n<weights count=\"2\">1 0 1.0 0</weights>\n"
     "<components count=\"2\">4 5</components>"},
    {"springConstraint", R"( name="it" constrain="|a")",
     "\n<stiffness>1.0</stiffness>\n<restLength>2.0</restLength>\n<damping>3.0</damping>\n"
     "<target name=\"|b\" weight=\"1.0\" />"},
    {"texture", R"( name="it" uri="b.dds")", ""},
    {"translationConstraint", R"( name="it" constrain="|a")",
     "\n<offset>1.0 2.0 3.0</offset>\n<target name=\"|b\" weight=\"1.0\" />"},
};

std::ostream& operator<<(std::ostream& out, const Whole& whole) {
    return out << whole.type;
}

std::string ElementOf(const Whole& whole) {
    const std::string_view customData =
        whole.keepsCustomData
            ? "<customData>\n<attribute name=\"k\" type=\"string\">v</attribute>\n"
              "</customData>\n"
            : "";
    return "<" + std::string(whole.type) + whole.startTag + ">" + whole.contents +
           "\n<node name=\"child\">\n</node>\n" + std::string(customData) + "</" + whole.type + ">";
}

std::string BodyOf(const Whole& whole) {
    return std::string(kReferred) + ElementOf(whole);
}

/// The object that stands last in the world: the one under test.
const VokObj& LastOf(const VokWorld& world) {
    return *world.GetChild(world.GetChildCount() - 1);
}

/// Reads `document` and writes it again. What is refused gives the text of the failure.
std::string ReadAndWrite(std::string_view document) {
    try {
        VokWorld world;
        Parse(world, document);
        return Write(world);
    } catch (const std::exception& e) {
        return e.what();
    }
}

class EveryType : public testing::TestWithParam<Whole> {
  protected:
    Library library;
};

TEST_P(EveryType, IsWrittenAsItWasRead) {
    VokWorld world;
    Parse(world, Document(BodyOf(GetParam())));
    EXPECT_EQ(LastOf(world).GetElementName(), GetParam().type);
    EXPECT_EQ(Write(LastOf(world)), ElementOf(GetParam()));
}

TEST_P(EveryType, ItsDocumentComesBackByteForByte) {
    const std::string once = ReadAndWrite(Document(BodyOf(GetParam())));
    ASSERT_TRUE(once.starts_with("<?xml")) << once;
    EXPECT_EQ(ReadAndWrite(once), once);
}

TEST_P(EveryType, WritingChangesNothing) {
    VokWorld world;
    Parse(world, Document(BodyOf(GetParam())));
    const std::string once = Write(world);
    EXPECT_EQ(Write(world), once);
}

TEST_P(EveryType, ACutDocumentIsRefused) {
    const std::string document = Document(BodyOf(GetParam()));
    // The line feed behind the root may be missing.
    for (std::size_t length = 0; length + 1 < document.size(); ++length) {
        const std::string result = ReadAndWrite(std::string_view(document).substr(0, length));
        ASSERT_FALSE(result.starts_with("<?xml")) << "cut at " << length;
        ASSERT_FALSE(result.empty());
    }
}

/// Each byte behind the root's start tag in turn becomes another one that means something.
TEST_P(EveryType, AChangedByteIsReadOrRefused) {
    constexpr std::string_view kBytes = "<>/\"=&;-.|9e \x01\xE4z";
    const std::string document = Document(BodyOf(GetParam()));
    std::mt19937 random(20);
    for (std::size_t i = document.find(kReferred); i < document.size(); ++i) {
        std::string changed = document;
        changed[i] = kBytes[random() % kBytes.size()];
        ASSERT_FALSE(ReadAndWrite(changed).empty());
        changed.erase(i, 1);
        ASSERT_FALSE(ReadAndWrite(changed).empty());
    }
}

/// Counts that say anything: no memory beyond the document's own, and no crash.
TEST_P(EveryType, ALyingNumberIsReadOrRefused) {
    const std::string document = Document(BodyOf(GetParam()));
    for (std::size_t i = document.find(kReferred); i < document.size(); ++i) {
        if (document[i] < '0' || document[i] > '9') continue;
        for (const char* number : {"4000000000", "2147483647", "-1", "99999999999999999999", "x"}) {
            std::string changed = document;
            changed.replace(i, 1, number);
            ASSERT_FALSE(ReadAndWrite(changed).empty());
        }
    }
}

TEST_P(EveryType, WithNothingItLoadsOrTellsWhatIsMissing) {
    const std::string type = GetParam().type;
    const auto nameless = FailureOf([&] {
        VokWorld world;
        Parse(world, Document("<" + type + "/>"));
    });
    EXPECT_EQ(nameless.text, type == "scene" ? "" : "Missing attribute in parse")
        << "a nameless scene is the hierarchy";
    const std::string minimal = ReadAndWrite(Document("<" + type + " name=\"it\"/>"));
    if (minimal.starts_with("<?xml")) {
        EXPECT_EQ(ReadAndWrite(minimal), minimal);
    } else {
        EXPECT_FALSE(minimal.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(RoundTrip, EveryType, testing::ValuesIn(kWholes),
                         [](const auto& row) { return std::string(row.param.type); });

TEST(RoundTrip, HasADocumentOfEveryType) {
    const Library library;
    std::vector<std::string_view> types;
    for (const Whole& whole : kWholes) types.emplace_back(whole.type);
    EXPECT_EQ(types, VokFactory::GetNames());
}

/// Puts "new/" in front of every name.
struct Mover : VokUpdateDependencies {
    void Translate(std::string& out, const std::string& name, const VokObj*) override {
        out = "new/" + name;
    }
};

/// One object of each type that holds a file name, each with a child that holds one, too.
constexpr std::string_view kHolders =
    "<texture name=\"t\" uri=\"t.dds\">\n<reference name=\"r\" uri=\"t.qeli\" namespace=\"\" />\n"
    "</texture>\n"
    "<cgshader name=\"c\" url=\"c.cg\">\n<reference name=\"r\" uri=\"c.qeli\" namespace=\"\" />\n"
    "</cgshader>\n"
    "<material name=\"m\" url=\"m.mat\" preseturl=\"p.mat\">\n"
    "<reference name=\"r\" uri=\"m.qeli\" namespace=\"\" />\n</material>\n"
    "<qelilocator name=\"q\">\n<file uri=\"q.qeli\" />\n<localPosition>0.0 0.0 "
    "0.0</localPosition>\n<reference name=\"r\" uri=\"below.qeli\" namespace=\"\" />\n"
    "</qelilocator>\n"
    "<reference name=\"r\" uri=\"r.qeli\" namespace=\"\">\n<texture name=\"t\" uri=\"r.dds\">\n"
    "</texture>\n</reference>\n"
    "<node name=\"n\">\n<customData>\n<attribute name=\"f\" type=\"filename\">f.txt</attribute>\n"
    "<attribute name=\"s\" type=\"string\">s.txt</attribute>\n</customData>\n</node>";

TEST(FileNames, AreListedFromEveryHolderInDocumentOrder) {
    Scene scene(kHolders);
    VokDependencies files;
    CollectDependencies(scene.world, files);
    EXPECT_EQ(files.GetFiles(),
              (std::vector<std::string>{"t.dds", "t.qeli", "c.cg", "c.qeli", "m.mat", "p.mat",
                                        "q.qeli", "below.qeli", "r.qeli", "r.dds", "f.txt"}))
        << "nothing below a material";
}

TEST(FileNames, AreRewrittenInEveryHolder) {
    Scene scene(kHolders);
    Mover mover;
    RewriteDependencies(scene.world, mover);
    std::string moved(kHolders);
    for (const char* name : {"t.dds", "t.qeli", "c.cg", "c.qeli", "m.mat", "q.qeli", "below.qeli",
                             "r.qeli", "r.dds", "f.txt"}) {
        // Quotes and tags keep the one name from being found in the other.
        const std::size_t at = std::min(moved.find("\"" + std::string(name) + "\""),
                                        moved.find(">" + std::string(name) + "<"));
        ASSERT_NE(at, std::string::npos) << name;
        moved.insert(at + 1, "new/");
    }
    const std::string written = Write(scene.world);
    EXPECT_NE(written.find(moved), std::string::npos) << written;
}

}  // namespace
}  // namespace SceneTest
