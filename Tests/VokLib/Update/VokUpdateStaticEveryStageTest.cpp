#include "VokLib/Update/UpdateTools.h"

using namespace UpdateTools;

namespace {

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";
constexpr const char* kXsi = " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";

/// The place of a version in the chain.
std::size_t At(const std::string& version) {
    const std::vector<std::string>& versions = Versions();
    return static_cast<std::size_t>(std::find(versions.begin(), versions.end(), version) -
                                    versions.begin());
}

/// What all stages have in common; one test for each of them but the first.
class EveryStage : public UpdateTest, public testing::WithParamInterface<std::string> {
  protected:
    std::string To() const { return Versions()[At(GetParam()) + 1]; }
    std::string Sheet() const { return Uri(GetParam() + "/" + To() + ".xslt"); }
    bool KeepsForeignContent() const { return At(To()) <= At("1_15_0"); }
    bool KeepsRootAttributes() const { return At(To()) >= At("1_10_0"); }

    std::string Run(const std::string& document) { return RunSheet(Sheet(), document); }
    std::string InRoot(const std::string& contents, const std::string& attributes = "") const {
        return "<QEL xmlns='" + VersionNamespace(GetParam()) + "'" + attributes + ">" + contents +
               "</QEL>";
    }
    /// The start of the result, up to the root's attributes that are not always there.
    std::string NewRoot() const {
        const std::string space = VersionNamespace(To());
        return std::string(kHead) + "<QEL schemaLocation=\"" + space + " " + space + ".xsd\"";
    }
    std::string NewSpaces() const {
        return " xmlns=\"" + VersionNamespace(To()) + "\"" + kXsi + ">";
    }
    /// What 1.9.0 adds to every root.
    std::string Form() const { return To() == "1_9_0" ? " filenameform=\"qelrootrelative\"" : ""; }
    std::string FormSpace() const {
        return To() == "1_9_0" ? " xmlns:to=\"" + VersionNamespace(To()) + "\"" : "";
    }
    /// Of a result: what stands inside its root.
    std::string Inside(const std::string& contents) {
        const std::string text = Run(InRoot(contents));
        const std::size_t start = text.find('>', text.find("<QEL")) + 1;
        return text.substr(start, text.rfind("</QEL>") - start);
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, EveryStage,
                         testing::ValuesIn(Versions().begin() + 1, Versions().end() - 1),
                         [](const auto& version) { return version.param; });

TEST_P(EveryStage, WritesARootOfTheNewVersion) {
    std::string text = Run(InRoot("\n<scene/>"));
    const std::string space = FormSpace();
    if (const std::size_t at = text.find(space); !space.empty() && at != std::string::npos)
        text.erase(at, space.size());
    EXPECT_EQ(text, NewRoot() + Form() + NewSpaces() + "\n<scene/></QEL>");
}

TEST_P(EveryStage, MovesElementsWithTheirAttributesAndTexts) {
    EXPECT_EQ(Inside(" <scene a='1' b='&quot;x&quot;'>\n <node name='n'>1.0 2.0<x/>\t3 </node>"
                     "</scene> "),
              " <scene a=\"1\" b=\"&quot;x&quot;\">\n <node name=\"n\">1.0 2.0<x/>\t3 </node>"
              "</scene> ");
}

TEST_P(EveryStage, TakesPrefixedElementsOfTheVersionAlong) {
    const std::string text =
        Run("<p:QEL xmlns:p='" + VersionNamespace(GetParam()) + "'><p:scene/></p:QEL>");
    EXPECT_NE(text.find("><scene/></QEL>"), std::string::npos) << text;
}

TEST_P(EveryStage, DropsTheOldSchemaLocationBareOrPrefixed) {
    const std::string attributes =
        std::string(kXsi) + " xsi:schemaLocation='old' schemaLocation='bare'";
    const std::string text = Run(InRoot("", attributes));
    EXPECT_EQ(text.find("old"), std::string::npos);
    EXPECT_EQ(text.find("bare"), std::string::npos);
    EXPECT_EQ(text.find("schemaLocation="), text.rfind("schemaLocation="));
}

TEST_P(EveryStage, KeepsOtherRootAttributesFrom110On) {
    const std::string text = Run(InRoot("", " upAxis='z' filenameform2='absolute'"));
    EXPECT_EQ(text.find(" upAxis=\"z\" filenameform2=\"absolute\"") != std::string::npos,
              KeepsRootAttributes())
        << text;
}

TEST_P(EveryStage, KeepsForeignElementsUpTo115) {
    const std::string inside =
        Inside("<a>1<f:x xmlns:f='foreign' f:y='2'>in<f:z/><node/></f:x>3</a>");
    if (!KeepsForeignContent()) {
        EXPECT_EQ(inside, "<a>1in<node/>3</a>") << "only its content stays";
        return;
    }
    EXPECT_NE(inside.find("<x y=\"2\""), std::string::npos) << inside;
    EXPECT_NE(inside.find(">in<z/><node/></x>3</a>"), std::string::npos) << inside;
}

TEST_P(EveryStage, RefusesARootOfAnotherVersion) {
    server->SetVerbosity(1);
    testing::internal::CaptureStdout();
    const std::string failure =
        ThrownText([&] { Run("<QEL xmlns='" + VersionNamespace("1_99_0") + "'/>"); });
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error: Input .qeli file is incorrect version. Expected namespace \"" +
                  VersionNamespace(GetParam()) + "\". Found namespace \"" +
                  VersionNamespace("1_99_0") + "\".\n");
    EXPECT_EQ(failure,
              "Failed to apply xslt \"" + Sheet() + "\" when updating old version .qeli file.");
    testing::internal::CaptureStdout();
    EXPECT_NE(ThrownText([&] { Run("<QEL/>"); }), "");
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Found namespace \"\"."),
              std::string::npos);
}

TEST_P(EveryStage, ComparesTheVersionOfARootCalledQelAlone) {
    EXPECT_EQ(ThrownText([&] { Run("<wrap xmlns='foreign'><QEL/></wrap>"); }), "");
}

/// Comments are told by a parse of their own: the update's own leaves them out.
TEST_P(EveryStage, KeepsCommentsUpTo115) {
    const std::string document = InRoot("<a><!-- word --></a>");
    const XmlDocument tree(
        xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr, 0));
    const XsltLibrary xslt;
    const XmlStylesheet sheet = server->LoadStylesheet(Sheet());
    const XmlDocument result(xsltApplyStylesheet(sheet.get(), tree.get(), nullptr));
    const XPathContext context(xmlXPathNewContext(result.get()));
    const XPathResult found(xmlXPathEvalExpression(ToXml("//comment()"), context.get()));
    EXPECT_EQ(xmlXPathCastToBoolean(found.get()) != 0, KeepsForeignContent());
}

}  // namespace
