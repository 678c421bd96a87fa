#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr const char* kSeeHelp = "Run qeli --help for more information.\n";

class QeliRun : public testing::Test {
  protected:
    ProgramResult Run(const std::vector<std::string>& arguments) const {
        return folder.Run("qeli", arguments);
    }

    void ExpectWrongUsage(const std::vector<std::string>& arguments,
                          const std::string& words) const {
        const ProgramResult run = Run(arguments);
        EXPECT_EQ(run.status, 2) << words;
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "qeli: " + words + "\n" + kSeeHelp);
    }

    RunFolder folder;
};

TEST_F(QeliRun, HelpNamesTheCommandsAndSucceeds) {
    const ProgramResult run = Run({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    for (const char* command : {"\n  convert ", "\n  check ", "\n  tree ", "\n  files "})
        EXPECT_NE(run.output.find(command), std::string::npos) << command;
}

TEST_F(QeliRun, EachCommandHasAHelpOfItsOwn) {
    EXPECT_NE(Run({"convert", "--help"}).output.find("Usage: qeli convert [OPTIONS] IN OUT\n"),
              std::string::npos);
    EXPECT_NE(Run({"check", "--help"}).output.find("Usage: qeli check [OPTIONS] IN...\n"),
              std::string::npos);
    EXPECT_NE(Run({"tree", "--help"}).output.find("  --depth N "), std::string::npos);
    EXPECT_NE(Run({"files", "--help"}).output.find("  --target NAME "), std::string::npos);
    EXPECT_EQ(Run({"files", "-h"}).status, 0);
}

TEST_F(QeliRun, TheVersionIsTheLibrarys) {
    const ProgramResult run = Run({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "qeli 1.28.3\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(QeliRun, WrongUsageGoesToStandardErrorWithStatus2) {
    ExpectWrongUsage({}, "A subcommand is required");
    ExpectWrongUsage({"chek", "a"},
                     "There is no command \"chek\". The commands are convert check tree files.");
    ExpectWrongUsage({"convert"}, "IN is required");
    ExpectWrongUsage({"convert", "a"}, "OUT is required");
    ExpectWrongUsage({"convert", "a", "b", "c"}, "The following argument was not expected: c");
    ExpectWrongUsage({"check"}, "IN is required");
    ExpectWrongUsage({"tree"}, "IN is required");
    ExpectWrongUsage({"files"}, "IN is required");
}

TEST_F(QeliRun, AMistypedFlagIsWrongUsage) {
    folder.WriteFile("a.qeli", OneJointDocument());
    ExpectWrongUsage({"--verison"}, "A subcommand is required");
    for (const std::string flag : {"--tpye", "--dept", "-t"})
        EXPECT_EQ(Run({"tree", "a.qeli", flag, "1"}).status, 2) << flag;
    for (const std::string flag : {"--depfiel", "--traget"})
        EXPECT_EQ(Run({"files", "a.qeli", flag, "x"}).status, 2) << flag;
    EXPECT_EQ(Run({"check", "a.qeli", "--all"}).status, 2);
    EXPECT_EQ(Run({"convert", "a.qeli", "b.qeli", "--force"}).status, 2);
    EXPECT_FALSE(folder.Has("b.qeli"));
}

TEST_F(QeliRun, CheckSaysOkForEachFineDocument) {
    folder.WriteFile("a.qeli", OneJointDocument());
    folder.WriteFile("b c.qeli", Document("<scene/>"));
    const ProgramResult run = Run({"check", "a.qeli", "b c.qeli"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "a.qeli: OK, version 1_28_1\nb c.qeli: OK, version 1_28_1\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(QeliRun, CheckGoesOnBehindABadDocument) {
    folder.WriteFile("bad.qeli", Document("<scene><joint name=\"a\">\n <jiont name=\"b\"/>"
                                          "</joint></scene>"));
    folder.WriteFile("good.qeli", OneJointDocument());
    const ProgramResult run = Run({"check", "bad.qeli", "good.qeli", "none.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "good.qeli: OK, version 1_28_1\n");
    EXPECT_EQ(run.errors,
              "bad.qeli:4:17: error: Unknown tag \"jiont\" (object ||a)\n"
              "none.qeli: error: File open error: \"none.qeli\": No such file or directory\n");
}

TEST_F(QeliRun, CheckNamesThePlaceThatTheParserTells) {
    folder.WriteFile("open.qeli", Document("<scene><joint name=\"a\">\n</scene>"));
    EXPECT_EQ(Run({"check", "open.qeli"}).errors,
              "open.qeli:4:9: error: Libxml2 parse error: 76 in \"open.qeli\" Line 4 Column 9 "
              "(object ||a)\n");
    folder.WriteFile("text.qeli", "hello");
    EXPECT_EQ(Run({"check", "text.qeli"}).errors,
              "text.qeli:1:1: error: Libxml2 parse error: Line 1 Column 1\n");
}

TEST_F(QeliRun, CheckListsTheLinksWithoutATarget) {
    folder.WriteFile("a.qeli", Document("<scene><node name=\"n\"/></scene><objset name=\"s\">"
                                        "<member path=\"||none\"/><member path=\"||n\"/>"
                                        "<member path=\"||gone\"/></objset>"));
    const ProgramResult run = Run({"check", "a.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "a.qeli: error: Unresolved VokObjLinks\n    |s->||gone\n    |s->||none\n");
}

TEST_F(QeliRun, CheckReadsOldVersions) {
    std::string old = OneJointDocument();
    old.replace(old.find("1_28_1"), 6, "1_20_0");
    folder.WriteFile("old.qeli", old);
    EXPECT_EQ(Run({"check", "old.qeli"}).output,
              "old.qeli: OK, version 1_20_0, read as it stands\n");
    old.replace(old.find("1_20_0"), 6, "9_99_9");
    folder.WriteFile("new.qeli", old);
    const ProgramResult unknown = Run({"check", "new.qeli"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.errors.substr(0, 17), "new.qeli: error: ");
}

TEST_F(QeliRun, AFolderIsNoDocument) {
    const ProgramResult run = Run({"check", "."});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, ".: error: File open error: \".\": Is a directory\n");
}

TEST_F(QeliRun, AFileMayBeNamedLikeACommandOrAFlag) {
    folder.WriteFile("tree", OneJointDocument());
    folder.WriteFile("--type", OneJointDocument());
    EXPECT_EQ(Run({"check", "tree"}).output, "tree: OK, version 1_28_1\n");
    EXPECT_EQ(Run({"check", "--", "--type"}).output, "--type: OK, version 1_28_1\n");
}

class QeliTree : public QeliRun {
  protected:
    QeliTree() {
        folder.WriteFile("hero.qeli",
                         Document("<scene><node name=\"rig\"><joint name=\"hero:Hips\">"
                                  "<joint name=\"hero:Spine\"/></joint><joint name=\"\"/></node>"
                                  "</scene><scene name=\"second\"/>"));
    }
};

}  // namespace
