#include "Update/StageRunner.h"

#include "VokLib/Update/UpdateTools.h"

#include <filesystem>
#include <fstream>

using namespace UpdateTools;

namespace {

constexpr const char* kSheet = "http://qel.example/sheet.xslt";

std::string Stylesheet(const std::string& contents) {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
           "xmlns:exsl='http://exslt.org/common' extension-element-prefixes='exsl'>" +
           contents + "</xsl:stylesheet>";
}

std::string RootTemplate(const std::string& contents) {
    return Stylesheet("<xsl:template match='/'>" + contents + "</xsl:template>");
}

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";
constexpr const char* kFailed =
    "Failed to apply xslt \"http://qel.example/sheet.xslt\" when updating old version .qeli file.";

class StageRunnerTest : public UpdateTest {
  protected:
    /// What the step's contents make of `document`.
    std::string RunStep(const std::string& contents, const std::string& document = "<a/>") {
        const XmlDocument step = ParseUpdateDocument("<step>" + contents + "</step>", "step");
        const XsltLibrary xslt;
        StageRunner runner(*server);
        const XmlDocument result =
            runner.Run(*step->children, ParseOldDocument(document.data(), document.size()).tree);
        std::ostringstream out;
        WritePlain(out, *result);
        return out.str();
    }
    std::string StepFailure(const std::string& contents) {
        return ThrownText([&] { RunStep(contents); });
    }
    /// What the sheet prints with `verbosity`, and behind it what it throws.
    std::string Printed(int verbosity, const std::string& sheet) {
        server->texts[kSheet] = sheet;
        server->SetVerbosity(verbosity);
        testing::internal::CaptureStdout();
        const std::string failure = StepFailure(Xslt(kSheet));
        const std::string printed = testing::internal::GetCapturedStdout();
        return printed + failure;
    }
    static std::string Xslt(const std::string& uri) { return "<xslt>" + uri + "</xslt>"; }
};

TEST_F(StageRunnerTest, ParametersReachTheStylesheetAsExpressions) {
    server->texts[kSheet] = Stylesheet(
        "<xsl:param name='p' select=\"'none'\"/><xsl:param name='q' select=\"'none'\"/>"
        "<xsl:template match='/'><r><xsl:value-of select='$p'/>,<xsl:value-of select='$q'/></r>"
        "</xsl:template>");
    EXPECT_EQ(RunStep(Xslt(kSheet)), std::string(kHead) + "<r>none,none</r>");
    EXPECT_EQ(RunStep(Xslt(kSheet) +
                      "<!-- c --><other/><xsltparam><name>p</name><value>'text'</value></xsltparam>"
                      "<xsltparam><value>1 + 2</value><name>q</name></xsltparam>"),
              std::string(kHead) + "<r>text,3</r>");
}

TEST_F(StageRunnerTest, AParameterNeedsANameAndAValue) {
    server->texts[kSheet] = RootTemplate("<r/>");
    EXPECT_EQ(StepFailure(Xslt(kSheet) + "<xsltparam><value>1</value></xsltparam>"),
              "xsltparam section in update xml is missing name field.");
    EXPECT_EQ(StepFailure(Xslt(kSheet) + "<xsltparam><name/><value>1</value></xsltparam>"),
              "xsltparam section in update xml is missing name field.");
    EXPECT_EQ(StepFailure(Xslt(kSheet) + "<xsltparam><name>p</name></xsltparam>"),
              "xsltparam section in update xml is missing value field.");
}

TEST_F(StageRunnerTest, AStepBeginsWithItsStylesheet) {
    EXPECT_EQ(StepFailure("<xsltparam/>"), "Unknown step in update process.");
    EXPECT_EQ(StepFailure("<xquery/>" + Xslt(kSheet)), "Unknown step in update process.");
}

TEST_F(StageRunnerTest, AnEmptyStepLeavesTheDocument) {
    EXPECT_EQ(RunStep("<!-- none -->"), std::string(kHead) + "<a/>");
}

TEST_F(StageRunnerTest, WhatFollowsTheStylesheetIsNoFurtherOne) {
    server->texts[kSheet] = RootTemplate("<first/>");
    EXPECT_EQ(RunStep(Xslt(kSheet) + Xslt("http://qel.example/other.xslt")),
              std::string(kHead) + "<first/>");
}

TEST_F(StageRunnerTest, AStylesheetThatIsNotThereIsNamed) {
    server->texts[kSheet] = "";
    EXPECT_EQ(StepFailure(Xslt(kSheet)),
              "Failed to get stylesheet \"http://qel.example/sheet.xslt\".");
}

TEST_F(StageRunnerTest, MessagesOfASuccessAreHeardOnlyInAVerboseRun) {
    const std::string sheet = RootTemplate("<xsl:message>Hello</xsl:message><r/>");
    EXPECT_EQ(Printed(0, sheet), "");
    EXPECT_EQ(Printed(1, sheet), "");
    EXPECT_EQ(Printed(2, sheet), "Hello\n");
}

TEST_F(StageRunnerTest, MessagesOfAFailureAreHeardUnlessTheRunIsQuiet) {
    const std::string sheet = RootTemplate(
        "<xsl:message>First</xsl:message><xsl:message terminate='yes'>Last</xsl:message><r/>");
    EXPECT_EQ(Printed(0, sheet), kFailed);
    EXPECT_EQ(Printed(1, sheet), std::string("First\nLast\n") + kFailed);
    EXPECT_EQ(Printed(2, sheet), std::string("First\nLast\n") + kFailed);
}

TEST_F(StageRunnerTest, AFailureCarriesTheMessages) {
    server->texts[kSheet] = RootTemplate("<xsl:message terminate='yes'>Why</xsl:message>");
    server->SetVerbosity(0);
    try {
        RunStep(Xslt(kSheet));
        FAIL();
    } catch (const VokUpdateFailure& failure) {
        EXPECT_EQ(failure.GetMessages(), "Why\n");
        EXPECT_EQ(failure.GetFile(), "Libraries/VokLib/Update/StageRunner.cpp");
    }
}

TEST_F(StageRunnerTest, ALineOfAMessageHas1024CharactersAtMost) {
    const std::string exact(1024, 'x');
    EXPECT_EQ(Printed(2, RootTemplate("<xsl:message>" + exact + "</xsl:message><r/>")),
              exact + "\n");
    EXPECT_EQ(Printed(2, RootTemplate("<xsl:message>" + exact + "yz</xsl:message><r/>")),
              exact + "\n");
}

TEST_F(StageRunnerTest, NothingIsHeardOnTheErrorStream) {
    testing::internal::CaptureStderr();
    Printed(1, RootTemplate("<xsl:value-of select='$undefined'/><r/>"));
    Printed(1, "<broken");
    server->texts[kSheet] = RootTemplate("<xsl:call-template name='none'/>");
    StepFailure(Xslt(kSheet));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

class StageSecurity : public StageRunnerTest {
  protected:
    StageSecurity() {
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "secret.xml") << "<secret>word</secret>";
    }
    ~StageSecurity() override { std::filesystem::remove_all(folder); }

    /// What the sheet writes; empty when it fails.
    std::string Outcome(const std::string& contents) {
        server->SetVerbosity(0);
        server->texts[kSheet] = RootTemplate(contents);
        try {
            return RunStep(Xslt(kSheet));
        } catch (const std::exception&) {
            return "";
        }
    }

    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) /
        (std::string("StageSecurity.") +
         testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(StageSecurity, AStylesheetReadsNoFile) {
    for (const std::string prefix : {"", "file://"}) {
        const std::string path = prefix + (folder / "secret.xml").generic_string();
        EXPECT_EQ(
            Outcome("<r><xsl:value-of select=\"document('" + path + "')\"/></r>").find("word"),
            std::string::npos);
    }
}

TEST_F(StageSecurity, AStylesheetIncludesNoFile) {
    std::ofstream(folder / "part.xslt")
        << Stylesheet("<xsl:template match='/'><r/></xsl:template>");
    server->texts[kSheet] =
        Stylesheet("<xsl:include href='" + (folder / "part.xslt").generic_string() + "'/>");
    EXPECT_EQ(StepFailure(Xslt(kSheet)),
              "Failed to get stylesheet \"http://qel.example/sheet.xslt\".");
}

TEST_F(StageSecurity, AStylesheetWritesNoFile) {
    const std::string path = (folder / "written.xml").generic_string();
    Outcome("<r/><exsl:document href='" + path + "'><x/></exsl:document>");
    Outcome("<r/><xsl:document href='" + path + "'><x/></xsl:document>");
    EXPECT_FALSE(std::filesystem::exists(folder / "written.xml"));
}

TEST_F(StageSecurity, AStylesheetReachesNoNetwork) {
    EXPECT_EQ(
        Outcome("<r><xsl:value-of select=\"document('http://127.0.0.1:9/x')\"/></r>").find("<r>"),
        std::string::npos);
}

}  // namespace
