#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

class QeliFiles : public testing::Test {
  protected:
    QeliFiles() {
        std::filesystem::create_directory(folder.GetPath() / "art");
        folder.WriteFile(
            "art/hero.qeli",
            Document("<scene/><reference name=\"a\" uri=\"../lib/my props.qeli\" namespace=\"p\"/>"
                     "<reference name=\"b\" uri=\"cost$#1.qeli\" namespace=\"q\"/>"
                     "<reference name=\"c\" uri=\"/shared/x.qeli\" namespace=\"r\"/>"
                     "<reference name=\"d\" uri=\"./sub\\..\\/cost$#1.qeli\" namespace=\"s\"/>"
                     "<reference name=\"e\" uri=\"hero.qeli\" namespace=\"t\"/>"
                     "<reference name=\"g\" uri=\"c:\\x\\y.qeli\" namespace=\"t\"/>"
                     "<reference name=\"f\" uri=\"B\xE4r.qeli\" namespace=\"t\"/>"));
    }

    ProgramResult Run(const std::vector<std::string>& arguments) const {
        return folder.Run("qeli", arguments);
    }

    RunFolder folder;
};

TEST_F(QeliFiles, EachFileStandsOnceInALineAsThisMachineOpensIt) {
    const ProgramResult run = Run({"files", "art/hero.qeli"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(
        run.output,
        "lib/my props.qeli\nart/cost$#1.qeli\n/shared/x.qeli\nc:/x/y.qeli\nart/B\xC3\xA4r.qeli\n");
}

TEST_F(QeliFiles, ADocumentNamedAbsolutelyHasAbsoluteFiles) {
    const std::string root = folder.Path();
    // Where there are drives, a name without one is on that of the document.
    const std::string drive = folder.GetPath().root_name().string();
    EXPECT_EQ(Run({"files", root + "/art/hero.qeli"}).output,
              root + "/lib/my props.qeli\n" + root + "/art/cost$#1.qeli\n" + drive +
                  "/shared/x.qeli\nc:/x/y.qeli\n" + root + "/art/B\xC3\xA4r.qeli\n");
}

TEST_F(QeliFiles, NamesThatTheSystemTakesForOneStandOnce) {
    folder.WriteFile("self.qeli",
                     Document("<scene/><reference name=\"a\" uri=\"SELF.qeli\" namespace=\"p\"/>"
                              "<reference name=\"b\" uri=\"x/c.qeli\" namespace=\"p\"/>"
                              "<reference name=\"c\" uri=\"X/C.qeli\" namespace=\"p\"/>"));
    EXPECT_EQ(Run({"files", "self.qeli"}).output,
              kIsWindows ? "x/c.qeli\n" : "SELF.qeli\nx/c.qeli\nX/C.qeli\n");
}

TEST_F(QeliFiles, ADocumentWithoutFilesPrintsNothing) {
    folder.WriteFile("a.qeli", OneJointDocument());
    const ProgramResult run = Run({"files", "a.qeli"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
}

TEST_F(QeliFiles, TheDependencyFileIsARuleWithMakesEscapes) {
    const ProgramResult run = Run(
        {"files", "art/hero.qeli", "--depfile", "hero.d", "--target", "out dir/he$ro#1:LE.bin"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(folder.ReadFile("hero.d"),
              "out\\ dir/he$$ro\\#1\\:LE.bin: \\\n"
              "  art/hero.qeli \\\n"
              "  lib/my\\ props.qeli \\\n"
              "  art/cost$$\\#1.qeli \\\n"
              "  /shared/x.qeli \\\n"
              "  c\\:/x/y.qeli \\\n"
              "  art/B\xC3\xA4r.qeli\n");
}

TEST_F(QeliFiles, ABackslashIsDoubledInFrontOfABlankAlone) {
    folder.WriteFile("a.qeli", OneJointDocument());
    EXPECT_EQ(Run({"files", "a.qeli", "--depfile", "-", "--target", "a\\b\\ c"}).output,
              "a\\b\\\\\\ c: \\\n  a.qeli\n");
}

TEST_F(QeliFiles, ADependencyFileNeedsATargetAndATargetAFile) {
    const ProgramResult noTarget = Run({"files", "art/hero.qeli", "--depfile", "hero.d"});
    EXPECT_EQ(noTarget.status, 2);
    EXPECT_EQ(noTarget.errors,
              "qeli: --depfile requires --target\nRun qeli --help for more information.\n");
    EXPECT_FALSE(folder.Has("hero.d"));
    const ProgramResult noFile = Run({"files", "art/hero.qeli", "--target", "x"});
    EXPECT_EQ(noFile.status, 2);
    EXPECT_EQ(noFile.output, "");
}

TEST_F(QeliFiles, EmptyNamesAreNotTakenForMissingOnes) {
    const ProgramResult noTarget =
        Run({"files", "art/hero.qeli", "--depfile", "hero.d", "--target", ""});
    EXPECT_EQ(noTarget.status, 2);
    EXPECT_EQ(noTarget.errors,
              "qeli: --target: The name is empty\nRun qeli --help for more information.\n");
    const ProgramResult noFile = Run({"files", "art/hero.qeli", "--depfile", "", "--target", "x"});
    EXPECT_EQ(noFile.status, 2);
    EXPECT_EQ(noFile.output, "");
}

TEST_F(QeliFiles, ABadDocumentLeavesTheDependencyFileAsItWas) {
    folder.WriteFile("hero.d", "old");
    const ProgramResult run =
        Run({"files", "none.qeli", "--depfile", "hero.d", "--target", "hero.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "none.qeli: error: File open error: \"none.qeli\": No such file or directory\n");
    EXPECT_EQ(folder.ReadFile("hero.d"), "old");
}

TEST_F(QeliFiles, TheDependencyFileNeverReplacesTheDocument) {
    const std::string before = folder.ReadFile("art/hero.qeli");
    const ProgramResult run =
        Run({"files", "art/hero.qeli", "--depfile", "./art/hero.qeli", "--target", "hero.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "./art/hero.qeli: error: The dependency file would replace the document\n");
    EXPECT_EQ(folder.ReadFile("art/hero.qeli"), before);
}

TEST_F(QeliFiles, TheDependencyFileNeverReplacesAFileThatItLists) {
    std::filesystem::create_directory(folder.GetPath() / "lib");
    folder.WriteFile("lib/my props.qeli", "props");
    std::filesystem::create_hard_link(folder.GetPath() / "lib/my props.qeli",
                                      folder.GetPath() / "hard");
    for (const std::string out :
         {"lib/my props.qeli", "art/../lib/my props.qeli", "hard", "./art/cost$#1.qeli"}) {
        const ProgramResult run =
            Run({"files", "art/hero.qeli", "--depfile", out, "--target", "x"});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors,
                  out + ": error: The dependency file would replace a file that it lists\n");
    }
    EXPECT_EQ(folder.ReadFile("lib/my props.qeli"), "props");
    EXPECT_FALSE(folder.Has("art/cost$#1.qeli"));
}

TEST_F(QeliFiles, TheDependencyFileNeverReplacesTheTarget) {
    folder.WriteFile("hero.bin", "skeleton");
    for (const std::string out : {"./hero.bin", "art/../new.bin"}) {
        const std::string target = std::filesystem::path(out).filename().string();
        const ProgramResult run =
            Run({"files", "art/hero.qeli", "--depfile", out, "--target", target});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors, out + ": error: The dependency file would replace the target\n");
    }
    EXPECT_EQ(folder.ReadFile("hero.bin"), "skeleton");
    EXPECT_FALSE(folder.Has("new.bin"));
}

TEST_F(QeliFiles, ADependencyFileThatCannotBeWrittenIsNamed) {
    const ProgramResult run =
        Run({"files", "art/hero.qeli", "--depfile", "none/hero.d", "--target", "hero.bin"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "none/hero.d: error: The file cannot be written: No such file or directory\n");
}

TEST_F(QeliFiles, AFileNameWithALineFeedIsRefused) {
    folder.WriteFile("a.qeli", Document("<scene/><reference name=\"a\" uri=\"x&#10;y\" "
                                        "namespace=\"p\"/>"));
    const ProgramResult run = Run({"files", "a.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(
        run.errors,
        "a.qeli: error: A list of lines cannot hold the line break behind 'x' in a file name\n");
}

}  // namespace
