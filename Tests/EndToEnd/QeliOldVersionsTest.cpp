#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

const std::vector<std::string> kUpdatedVersions = {"1_0_4", "1_0_5",  "1_0_7", "1_2_0", "1_2_1",
                                                   "1_4_0", "1_5_0",  "1_5_3", "1_8_0", "1_8_2",
                                                   "1_9_0", "1_10_0", "1_14_1"};
const std::vector<std::string> kCompatibleVersions = {
    "1_15_0", "1_16_0", "1_17_0", "1_20_0", "1_20_3", "1_22_0", "1_22_1", "1_22_2",
    "1_22_4", "1_22_5", "1_23_0", "1_23_1", "1_24_1", "1_27_1", "1_27_2", "1_27_3"};

class QeliOldVersions : public testing::Test {
  protected:
    static std::string Old(const std::string& version, const std::string& body) {
        return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<QEL xmlns=\"http://qel.example/"
               "ns/qeli/" +
               version + "/qeli\" filenameform=\"qelirelative\">\n" + body + "\n</QEL>\n";
    }
    ProgramResult Qeli(const std::vector<std::string>& arguments) const {
        return folder.Run("qeli", arguments);
    }

    RunFolder folder;
};

constexpr const char* kRig = "<scene><joint name=\"root\"><joint name=\"tip\"/></joint></scene>";

TEST_F(QeliOldVersions, CheckTellsTheVersionAndWhetherItNeedsTheUpdate) {
    folder.WriteFile("now.qeli", Old("1_28_1", kRig));
    EXPECT_EQ(Qeli({"check", "now.qeli"}).output, "now.qeli: OK, version 1_28_1\n");
    for (const std::string& version : kUpdatedVersions) {
        folder.WriteFile("a.qeli", Old(version, kRig));
        const ProgramResult run = Qeli({"check", "a.qeli"});
        EXPECT_EQ(run.output, "a.qeli: OK, version " + version + ", needs the update to 1_28_1\n");
        EXPECT_EQ(run.errors, "");
    }
    for (const std::string& version : kCompatibleVersions) {
        folder.WriteFile("a.qeli", Old(version, kRig));
        EXPECT_EQ(Qeli({"check", "a.qeli"}).output,
                  "a.qeli: OK, version " + version + ", read as it stands\n");
    }
}

TEST_F(QeliOldVersions, ConvertBringsEveryVersionToTheSameDocument) {
    folder.WriteFile("now.qeli", Old("1_28_1", kRig));
    ASSERT_EQ(Qeli({"convert", "now.qeli", "now-out.qeli"}).status, 0);
    const std::string expected = folder.ReadFile("now-out.qeli");
    const auto withoutSpaces = [](std::string text) {
        // What the root says of namespaces is the document's own.
        const std::size_t start = text.find("<QEL");
        return text.erase(start, text.find('>', start) - start);
    };
    for (const auto& versions : {kUpdatedVersions, kCompatibleVersions})
        for (const std::string& version : versions) {
            folder.WriteFile("old.qeli", Old(version, kRig));
            const ProgramResult run = Qeli({"convert", "old.qeli", "new.qeli"});
            EXPECT_EQ(run.status, 0) << version << run.errors;
            const std::string written = folder.ReadFile("new.qeli");
            EXPECT_EQ(withoutSpaces(written), withoutSpaces(expected)) << version;
            EXPECT_EQ(Qeli({"check", "new.qeli"}).output, "new.qeli: OK, version 1_28_1\n")
                << version;
        }
}

TEST_F(QeliOldVersions, OldAndNewBakeToTheSameBytes) {
    folder.WriteFile("now.qeli", Old("1_28_1", kRig));
    ASSERT_EQ(folder.Rigbake({"-in", "now.qeli", "-out", "now.bin"}).status, 0);
    for (const char* version : {"1_0_4", "1_14_1", "1_27_3"}) {
        folder.WriteFile("old.qeli", Old(version, kRig));
        const ProgramResult run =
            folder.Rigbake({"-in", "old.qeli", "-out", "old.bin", "-autoupdate", "true"});
        EXPECT_EQ(run.status, 0) << run.output;
        EXPECT_EQ(folder.ReadFile("old.bin"), folder.ReadFile("now.bin")) << version;
    }
}

TEST_F(QeliOldVersions, ABakeWithoutTheUpdateNamesBothVersions) {
    folder.WriteFile("old.qeli", Old("1_14_1", kRig));
    const ProgramResult run = folder.Rigbake({"-in", "old.qeli", "-out", "old.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find(".qeli instance is not the correct version. Expected version "
                              "namespace of \"http://qel.example/ns/qeli/1_28_1/qeli\" but got "
                              "\"http://qel.example/ns/qeli/1_14_1/qeli\"."),
              std::string::npos);
}

TEST_F(QeliOldVersions, TheStylesheetsAreHeardInAVerboseLoadAndInAFailedOne) {
    const std::string camera = "<camera name=\"c\"><hzFov>1</hzFov></camera>";
    const std::string message = "Updating camera: c\n";
    const auto heard = [&](const std::vector<std::string>& more, const std::string& body) {
        folder.WriteFile("old.qeli", Old("1_0_7", kRig + body));
        std::vector<std::string> arguments = {"-in",     "old.qeli",    "-out",
                                              "old.bin", "-autoupdate", "true"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return folder.Rigbake(arguments).output.find(message) != std::string::npos;
    };
    EXPECT_FALSE(heard({}, camera));
    EXPECT_TRUE(heard({"-verboseload"}, camera));
    EXPECT_FALSE(heard({"-quietload"}, camera));
    EXPECT_FALSE(heard({"-verboseload", "-quietload"}, camera)) << "quiet is read last";
    // The stage that fails is a later one; it has only its own to say.
    const std::string bad = "<constraint name=\"c\" type=\"none\"/>";
    folder.WriteFile("bad.qeli", Old("1_5_0", kRig + bad));
    const std::vector<std::string> run = {"-in",     "bad.qeli",    "-out",
                                          "bad.bin", "-autoupdate", "true"};
    EXPECT_NE(folder.Rigbake(run).output.find(
                  "Found old constraint to update.\nUnknown constraint type.\n"),
              std::string::npos);
    std::vector<std::string> quiet = run;
    quiet.push_back("-quietload");
    const ProgramResult silent = folder.Rigbake(quiet);
    EXPECT_EQ(silent.status, 1);
    EXPECT_EQ(silent.output.find("Unknown constraint type."), std::string::npos);
    EXPECT_NE(silent.output.find("Failed to apply xslt \"http://qel.example/ns/qeli/1_5_0/"
                                 "1_5_3.xslt\" when updating old version .qeli file."),
              std::string::npos);
}

TEST_F(QeliOldVersions, CheckSaysWhyAStageGaveUp) {
    folder.WriteFile("a.qeli", Old("1_5_0", "<constraint name=\"c\" type=\"none\"/>"));
    const ProgramResult run = Qeli({"check", "a.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "a.qeli: error: Failed to apply xslt \"http://qel.example/ns/qeli/1_5_0/1_5_3.xslt\" "
              "when updating old version .qeli file.\n    Unknown constraint type.\n");
}

TEST_F(QeliOldVersions, CheckNamesThePlaceInTheOldDocumentAlone) {
    folder.WriteFile("a.qeli", Old("1_14_1", "<scene>\n <node name=\"a\">\n</scene>"));
    EXPECT_EQ(Qeli({"check", "a.qeli"}).errors,
              "a.qeli:5:9: error: Failed to parse out of date .qeli document. Libxml2 parse error: "
              "76 Line 5 Column 9\n");
    // The reader's fault lies in the text that the update wrote.
    folder.WriteFile("b.qeli", Old("1_14_1", "<scene><node name=\"a&lt;b\"/></scene>"));
    EXPECT_EQ(Qeli({"check", "b.qeli"}).errors.rfind("b.qeli: error: Libxml2 parse error: ", 0),
              0u);
}

TEST_F(QeliOldVersions, TheWarningOfRemovedLinksGoesToStandardError) {
    folder.WriteFile("a.qeli", Old("1_2_0", "<objset name=\"s\"><member path=\"|gone\"/></objset>" +
                                                std::string(kRig)));
    const ProgramResult run = Qeli({"check", "a.qeli"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.errors.find("These links have been removed."), std::string::npos);
    EXPECT_NE(run.errors.find("Unresolved link: |s->||gone\n"), std::string::npos);
}

TEST_F(QeliOldVersions, AnOldDocumentOpensNoOtherFile) {
    folder.WriteFile("secret.txt", "word");
    folder.WriteFile(
        "a.qeli",
        "<!DOCTYPE QEL [<!ENTITY e SYSTEM \"secret.txt\">]>\n"
        "<QEL xmlns=\"http://qel.example/ns/qeli/1_14_1/qeli\"><scene><node name=\"n\">"
        "&e;</node></scene></QEL>");
    const ProgramResult run = Qeli({"check", "a.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "a.qeli: error: Failed to parse out of date .qeli document. The entity \"e\" is an "
              "external file; external files are not read.\n");
}

TEST_F(QeliOldVersions, AProgramWithAParserOfItsOwnLendsItToTheStylesheets) {
    if (!RIGBAKE_OWN_PARSER) GTEST_SKIP() << "The programs share the system's parser.";
    folder.WriteFile("old.qeli", Old("1_0_4", kRig));
    const ProgramResult run = folder.Run("qeli", {"check", "old.qeli"}, {{"LD_DEBUG", "bindings"}});
    ASSERT_EQ(run.status, 0);
    std::istringstream lines(run.errors);
    int ownNames = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t to = line.find(" to ");
        if (line.find("xslt.so") > to) continue;
        EXPECT_EQ(line.find("libxml2.so", to), std::string::npos) << line;
        if (line.find("/qeli [", to) != std::string::npos) ++ownNames;
    }
    EXPECT_GT(ownNames, 100);
}

}  // namespace
