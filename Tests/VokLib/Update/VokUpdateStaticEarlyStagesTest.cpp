#include "VokLib/Update/UpdateTools.h"

using namespace UpdateTools;

namespace {

/// The first versioned form. Documents before it have no namespace.
class StageInto104 : public StageTest {
  protected:
    StageInto104() : StageTest("1_0_3", "1_0_4") {}

    std::string Old(const std::string& contents) {
        const std::string text = Run("<QEL>" + contents + "</QEL>");
        const std::size_t start = text.find('>', text.find("<QEL")) + 1;
        return text.substr(start, text.rfind("</QEL>") - start);
    }
    /// What the stage says of custom data with such an attribute, or of a whole document.
    std::string Said(const std::string& document) {
        server->SetVerbosity(1);
        testing::internal::CaptureStdout();
        const std::string failure = ThrownText([&] { Run(document); });
        EXPECT_EQ(failure,
                  "Failed to apply xslt \"http://qel.example/ns/qeli/1_0_3/1_0_4.xslt\" when "
                  "updating old version .qeli file.");
        return testing::internal::GetCapturedStdout();
    }
    std::string SaidOfType(const std::string& type) {
        return Said("<QEL><node><customData><attribute name='a' type='" + type +
                    "'>1</attribute></customData></node></QEL>");
    }
};

TEST_F(StageInto104, TheRootGetsTheVersionAndKeepsItsAttributes) {
    EXPECT_EQ(Run("<QEL a='1' schemaLocation='x'>\n<scene b='2'>t</scene></QEL>"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<QEL a=\"1\" schemaLocation=\"x\" "
              "xmlns=\"http://qel.example/ns/qeli/1_0_4/qeli\">\n<scene b=\"2\">t</scene></QEL>");
}

TEST_F(StageInto104, AnotherRootIsRefused) {
    EXPECT_EQ(Said("<scene/>"), "Input instance is not a version 1.0.3 .qeli file.\n");
    EXPECT_EQ(Said("<p:QEL xmlns:p='x'/>"), "Input instance is not a version 1.0.3 .qeli file.\n");
}

TEST_F(StageInto104, ADefaultNamespaceIsRefused) {
    for (const std::string& space : {std::string("any"), VersionNamespace("1_0_3")})
        EXPECT_EQ(Said("<QEL xmlns='" + space + "'/>"),
                  "Instance already specifies a default namespace. This prevents an update to "
                  "1.0.4 because that uses the default namespace for versioning.\n");
}

TEST_F(StageInto104, DynamicTypesStayUntouched) {
    const std::string inside = Old("<dynamicType a='1'><x type='Bool'>t</x></dynamicType>");
    EXPECT_EQ(inside, "<dynamicType a=\"1\" xmlns=\"\"><x type=\"Bool\">t</x></dynamicType>");
}

TEST_F(StageInto104, ForeignElementsStay) {
    EXPECT_NE(Old("<f:x xmlns:f='foreign'><node/></f:x>").find("<x xmlns:f=\"foreign\">"),
              std::string::npos);
}

TEST_F(StageInto104, SomeCustomDataHasNoFormAnyMore) {
    EXPECT_EQ(SaidOfType("Vector4"), "Vector4 custom data is no longer supported.\n");
    EXPECT_EQ(SaidOfType("Matrix44"), "Matrix44 custom data is no longer supported.\n");
    EXPECT_EQ(SaidOfType("Enum"),
              "Enum custom data type found. Version 1.0.4 supplies additional information for "
              "enums. Cannot update this instance.\n");
}

TEST_F(StageInto104, CustomStringsKeepTheirText) {
    EXPECT_EQ(Old("<customData><attribute name='a' type='String'> BIG &amp; small </attribute>"
                  "</customData>"),
              "<customData><attribute type=\"string\" name=\"a\"> BIG &amp; small </attribute>"
              "</customData>");
}

TEST_F(StageInto104, OtherCustomDataMovesItsTextIntoAValue) {
    for (const auto& [was, is] : std::map<std::string, std::string>{{"Bool", "bool"},
                                                                    {"Int", "int"},
                                                                    {"Float", "float"},
                                                                    {"Vector2", "vector2"},
                                                                    {"Vector3", "vector3"},
                                                                    {"FIBVx", "fibvx"}})
        EXPECT_EQ(Old("<customData><attribute name='a' type='" + was +
                      "' min='0' max='9'>4 5</attribute></customData>"),
                  "<customData><attribute name=\"a\" type=\"" + is +
                      "\" min=\"0\" max=\"9\" value=\"4 5\"/></customData>");
}

TEST_F(StageInto104, AttributesElsewhereAreNoCustomData) {
    EXPECT_EQ(Old("<blindData><attribute name='a' type='Int'>1</attribute></blindData>"),
              "<blindData><attribute name=\"a\" type=\"Int\">1</attribute></blindData>");
}

TEST_F(StageInto104, ADocumentWithoutAVersionGoesAllTheWay) {
    const std::string text = Updated("<QEL><scene><node name='n'/></scene></QEL>", "");
    EXPECT_NE(text.find("<QEL schemaLocation=\"http://qel.example/ns/qeli/1_28_1/qeli "
                        "http://qel.example/ns/qeli/1_28_1/qeli.xsd\""),
              std::string::npos);
    EXPECT_NE(text.find("><scene><node name=\"n\"/></scene></QEL>"), std::string::npos);
}

class StageInto107 : public StageTest {
  protected:
    StageInto107() : StageTest("1_0_5", "1_0_7") {}
};

TEST_F(StageInto107, AnimationsAreCollectedBehindEverythingElse) {
    EXPECT_EQ(Inside("<anim name='a' target='t'><animChannel/></anim><scene>1<node><anim "
                     "name='b'>x</anim></node></scene><anim name='c'/><objset/>"),
              "<scene>1<node/></scene><objset/><animclip name=\"xsltUpdateClip\"><anim name=\"a\" "
              "target=\"t\"><animChannel/></anim><anim name=\"b\">x</anim><anim name=\"c\"/>"
              "</animclip>");
    EXPECT_EQ(Messages("<anim/><anim/>"), "Collecting animations in an animClip.\n");
}

TEST_F(StageInto107, AnAnimationInsideAnotherStandsBesideItInTheClip) {
    EXPECT_EQ(Inside("<anim name='a'><animChannel/><anim name='b'/></anim>"),
              "<animclip name=\"xsltUpdateClip\"><anim name=\"a\"><animChannel/></anim><anim "
              "name=\"b\"/></animclip>");
}

TEST_F(StageInto107, NoAnimationsMakeNoClip) {
    EXPECT_EQ(Inside("<scene/>"), "<scene/>");
    EXPECT_EQ(Messages("<scene/>"), "");
}

class StageInto120 : public StageTest {
  protected:
    StageInto120() : StageTest("1_0_7", "1_2_0") {}
};

TEST_F(StageInto120, ACameraTellsItsFilmInsteadOfItsAngles) {
    EXPECT_EQ(Inside("<camera name='c'><nearClipPlane>1</nearClipPlane><hzFov> 0.9 </hzFov>"
                     "<vtFov>5.0e-1</vtFov><node/></camera>"),
              "<camera name=\"c\"><focalLength>3.5e-2</focalLength><horizontalFilmAperture>"
              "0.0338138545931605</horizontalFilmAperture><verticalFilmAperture>"
              "0.0178739344854725</verticalFilmAperture><nearClipPlane>1</nearClipPlane><node/>"
              "</camera>");
    EXPECT_EQ(Messages("<camera name='c'><hzFov>1</hzFov></camera><node><camera name='d'/></node>"),
              "Updating camera: c\nUpdating camera: d\n");
}

TEST_F(StageInto120, AnAngleThatIsNotThereMakesNoAperture) {
    EXPECT_EQ(Inside("<camera name='c'/>"), "<camera name=\"c\"/>");
    EXPECT_EQ(Inside("<camera><vtFov>0</vtFov></camera>"),
              "<camera><focalLength>3.5e-2</focalLength><verticalFilmAperture>0"
              "</verticalFilmAperture></camera>");
}

TEST_F(StageInto120, AnglesElsewhereStay) {
    EXPECT_EQ(Inside("<light><hzFov>1</hzFov></light>"), "<light><hzFov>1</hzFov></light>");
}

TEST_F(StageInto120, TheTangentIsNeeded) {
    const std::string old = "<QEL xmlns='" + VersionNamespace("1_0_7") + "'/>";
    const XmlDocument step =
        ParseUpdateDocument("<step><xslt>" + Sheet() + "</xslt></step>", "step");
    const XsltLibrary xslt;
    xsltUnregisterExtModuleFunction(ToXml("tan"), ToXml("http://exslt.org/math"));
    StageRunner runner(*server);
    testing::internal::CaptureStdout();
    EXPECT_NE(ThrownText([&] {
                  runner.Run(*step->children, ParseOldDocument(old.data(), old.size()).tree);
              }),
              "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error: Conversion between 1.0.7 and 1.2.0 requires the math:tan extension.\n");
}

class StageInto150 : public StageTest {
  protected:
    StageInto150() : StageTest("1_4_0", "1_5_0") {}
};

TEST_F(StageInto150, ALightLosesItsDirection) {
    EXPECT_EQ(Inside("<light name='l'><intensity>1</intensity><direction>0 0 1</direction></light>"
                     "<node><direction/></node>"),
              "<light name=\"l\"><intensity>1</intensity></light><node><direction/></node>");
}

class StageInto153 : public StageTest {
  protected:
    StageInto153() : StageTest("1_5_0", "1_5_3") {}

    std::string Constraint(const std::string& type) {
        return Inside("<constraint name='c' type='" + type +
                      "' constrain='n'><direction>1 2 3</direction><target name='t' "
                      "weight='1'/></constraint>");
    }
};

TEST_F(StageInto153, EachKindBecomesAnElementWithItsDefaultsInFront) {
    const std::string common = " name=\"c\" constrain=\"n\">";
    const std::string target = "<target name=\"t\" weight=\"1\"/>";
    EXPECT_EQ(Constraint("aimConstraint"),
              "<aimConstraint" + common +
                  "<offset>0.0 0.0 0.0</offset><aim>0.0 0.0 1.0</aim><up>0.0 1.0 0.0</up>"
                  "<globalup>0.0 1.0 0.0</globalup>" +
                  target + "</aimConstraint>");
    EXPECT_EQ(Constraint("orientationConstraint"),
              "<orientationConstraint" + common +
                  "<rotEul>0.0 0.0 0.0</rotEul><orientInterpolation>average"
                  "</orientInterpolation>" +
                  target + "</orientationConstraint>");
    for (const std::string kind : {"scaleConstraint", "translationConstraint"})
        EXPECT_EQ(Constraint(kind), "<" + kind + common + "<offset>0.0 0.0 0.0</offset>" + target +
                                        "</" + kind + ">");
    EXPECT_EQ(Messages("<constraint type='scaleConstraint'/>"),
              "Found old constraint to update.\n");
}

TEST_F(StageInto153, AnyOtherKindIsRefused) {
    for (const std::string type : {"type='parentConstraint'", "type=''", "", "type='aim'"})
        EXPECT_EQ(Messages("<constraint " + type + "/>"),
                  "Found old constraint to update.\nUnknown constraint type.\n")
            << type;
    EXPECT_NE(ThrownText([&] { Constraint("none"); }), "");
}

}  // namespace
