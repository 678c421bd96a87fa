#include "Update/RenamingSheet.h"

#include "VokLib/Update/UpdateTools.h"

using namespace UpdateTools;

namespace {

class RenamingSheetTest : public UpdateTest {
  protected:
    static bool IsLate(std::size_t from) {
        return from >=
               static_cast<std::size_t>(std::find(Versions().begin(), Versions().end(), "1_15_0") -
                                        Versions().begin());
    }
    /// `document` of 1_15_0 through all late stages, in one run, where later ones need not run, or
    /// with a run for each, where every stylesheet does.
    std::string Run(const std::string& document, bool inOneRun) {
        const XsltLibrary xslt;
        auto runner = std::make_unique<StageRunner>(*server);
        XmlDocument tree = ParseOldDocument(document.data(), document.size()).tree;
        for (std::size_t i = 14; i + 1 < Versions().size(); ++i) {
            const XmlDocument step = ParseUpdateDocument(
                "<step><xslt>" + Uri(Versions()[i] + "/" + Versions()[i + 1] + ".xslt") +
                    "</xslt></step>",
                "step");
            if (!inOneRun) runner = std::make_unique<StageRunner>(*server);
            tree = runner->Run(*step->children, std::move(tree));
        }
        std::ostringstream out;
        WritePlain(out, *tree);
        return out.str();
    }
    static std::string Late(const std::string& contents, const std::string& attributes = "") {
        return "<QEL xmlns='" + VersionNamespace("1_15_0") + "'" + attributes + ">" + contents +
               "</QEL>";
    }
};

TEST_F(RenamingSheetTest, ExactlyTheStagesSince115SayThatTheyOnlyRename) {
    for (std::size_t i = 0; i + 1 < Versions().size(); ++i) {
        const XmlStylesheet sheet =
            server->LoadStylesheet(Uri(Versions()[i] + "/" + Versions()[i + 1] + ".xslt"));
        const std::optional<RenamingSheet> renaming = FindRenaming(*sheet);
        ASSERT_EQ(renaming.has_value(), IsLate(i)) << Versions()[i];
        if (!renaming) continue;
        EXPECT_EQ(renaming->from, VersionNamespace(Versions()[i]));
        EXPECT_EQ(renaming->to, VersionNamespace(Versions()[i + 1]));
    }
}

TEST_F(RenamingSheetTest, OneRunWritesWhatTheStagesWriteOneByOne) {
    const std::string documents[] = {
        Late(""),
        Late("\n <scene a='1'>x<node/>\n</scene> "),
        Late("<scene/>", " upAxis='z' filenameform='absolute'"),
        Late("<scene/>", " xmlns:xsi='other' xsi:a='1' xsi:schemaLocation='2' schemaLocation='3'"),
        Late("<scene/>",
             " xmlns:to='" + VersionNamespace("1_9_0") + "' to:filenameform='absolute'"),
        Late("<scene p:b='2'/>", " xmlns:p='" + VersionNamespace("1_15_0") + "' p:a='1'"),
        Late("<a xmlns:p='one' p:b='1'><c xmlns:p='two' p:b='2'/></a>"),
        Late("<f:x xmlns:f='foreign' f:a='1'>t<node/><f:y/></f:x><z xmlns=''>u<node/></z>"),
        Late("<f:x xmlns:f='" + VersionNamespace("1_17_0") + "'>t</f:x>"),
        Late("<a xml:space='preserve' xml:lang='e'> </a>"),
        "<p:QEL xmlns:p='" + VersionNamespace("1_15_0") + "'><p:scene p:a='1'/></p:QEL>",
        "<wrap xmlns='" + VersionNamespace("1_15_0") + "'><QEL a='1'/></wrap>",
    };
    for (const std::string& document : documents)
        EXPECT_EQ(Run(document, true), Run(document, false)) << document;
}

TEST_F(RenamingSheetTest, TheFirstStageMakesATreeAndTheNextKeepsIt) {
    const std::string text = Late("<scene/>");
    const XsltLibrary xslt;
    StageRunner runner(*server);
    const auto run = [&](const std::string& sheet, XmlDocument tree) {
        const XmlDocument step =
            ParseUpdateDocument("<step><xslt>" + Uri(sheet) + "</xslt></step>", "step");
        return runner.Run(*step->children, std::move(tree));
    };
    XmlDocument first = run("1_15_0/1_16_0.xslt", ParseOldDocument(text.data(), text.size()).tree);
    const xmlDoc* const before = first.get();
    const XmlDocument second = run("1_16_0/1_17_0.xslt", std::move(first));
    EXPECT_EQ(second.get(), before);
    EXPECT_EQ(FromXml(second->children->ns->href), VersionNamespace("1_17_0"));
}

TEST_F(RenamingSheetTest, AnotherVersionStillMeetsTheStylesheet) {
    server->SetVerbosity(0);
    const std::string sheets[] = {"1_15_0/1_16_0.xslt", "1_17_0/1_20_0.xslt"};
    const std::string text = Late("<scene/>");
    const XsltLibrary xslt;
    StageRunner runner(*server);
    XmlDocument tree = ParseOldDocument(text.data(), text.size()).tree;
    std::string failure;
    for (const std::string& sheet : sheets) {
        const XmlDocument step =
            ParseUpdateDocument("<step><xslt>" + Uri(sheet) + "</xslt></step>", "step");
        failure = ThrownText([&] { tree = runner.Run(*step->children, std::move(tree)); });
    }
    EXPECT_EQ(failure, "Failed to apply xslt \"" + Uri(sheets[1]) +
                           "\" when updating old version .qeli file.");
}

TEST_F(RenamingSheetTest, OnlyATreeOfOneNamespaceIsRenamed) {
    const auto holds = [](const std::string& text) {
        const XmlDocument document(xmlReadMemory(text.data(), static_cast<int>(text.size()),
                                                 nullptr, nullptr, XML_PARSE_NOENT));
        return HoldsOneNamespace(*document);
    };
    const std::string xsi = " xmlns:x='http://www.w3.org/2001/XMLSchema-instance'";
    EXPECT_TRUE(holds("<QEL xmlns='a'" + xsi + " x:schemaLocation='s' b='1'>t<c><d/></c></QEL>"));
    EXPECT_FALSE(holds("<QEL xmlns='a'/>"));
    EXPECT_FALSE(holds("<QEL xmlns='a' schemaLocation='s'/>"));
    EXPECT_FALSE(holds("<QEL xmlns='a'" + xsi + " x:schemaLocation='s' schemaLocation='t'/>"));
    EXPECT_FALSE(holds("<QEL" + xsi + " x:schemaLocation='s'/>"));
    EXPECT_FALSE(holds("<wrap xmlns='a'" + xsi + " x:schemaLocation='s'/>"));
    EXPECT_FALSE(holds("<QEL xmlns='a'" + xsi + " x:schemaLocation='s'><b xmlns='c'/></QEL>"));
    EXPECT_FALSE(holds("<QEL xmlns='a'" + xsi + " x:schemaLocation='s'><b xmlns='a'/></QEL>"));
    EXPECT_FALSE(holds("<QEL xmlns='a'" + xsi + " x:schemaLocation='s'><!-- c --></QEL>"));
    EXPECT_FALSE(holds("<QEL xmlns='a'" + xsi + " x:schemaLocation='s'/><!-- c -->"));
}

}  // namespace
