#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

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

class QeliTree : public QeliRun {
  protected:
    QeliTree() {
        folder.WriteFile("hero.qeli",
                         Document("<scene><node name=\"rig\"><joint name=\"hero:Hips\">"
                                  "<joint name=\"hero:Spine\"/></joint><joint name=\"\"/></node>"
                                  "</scene><scene name=\"second\"/>"));
    }
};

TEST_F(QeliTree, ObjectsStandIndentedWithTypesAndNames) {
    const ProgramResult run = Run({"tree", "hero.qeli"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output,
              "QEL hero.qeli\n"
              "  scene (hierarchy)\n"
              "    node rig\n"
              "      joint hero:Hips\n"
              "        joint hero:Spine\n"
              "      joint (no name)\n"
              "  scene second\n");
}

TEST_F(QeliTree, TheDepthCountsFromTheRoot) {
    EXPECT_EQ(Run({"tree", "hero.qeli", "--depth", "0"}).output, "QEL hero.qeli\n");
    EXPECT_EQ(Run({"tree", "--depth=2", "hero.qeli"}).output,
              "QEL hero.qeli\n  scene (hierarchy)\n    node rig\n  scene second\n");
    EXPECT_EQ(Run({"tree", "hero.qeli", "--depth", "2147483647"}).output,
              Run({"tree", "hero.qeli"}).output);
}

TEST_F(QeliTree, OfATypeTheTreeOfItsOwnRemains) {
    EXPECT_EQ(Run({"tree", "--type", "joint", "hero.qeli"}).output,
              "joint hero:Hips\n  joint hero:Spine\njoint (no name)\n");
    EXPECT_EQ(Run({"tree", "--type", "joint", "--type", "scene", "hero.qeli"}).output,
              "scene (hierarchy)\n  joint hero:Hips\n    joint hero:Spine\n"
              "  joint (no name)\nscene second\n");
    EXPECT_EQ(Run({"tree", "--type", "joint", "--depth", "3", "hero.qeli"}).output,
              "joint hero:Hips\njoint (no name)\n");
    EXPECT_EQ(Run({"tree", "--type", "camera", "hero.qeli"}).output, "");
}

TEST_F(QeliTree, AnUnknownTypeIsWrongUsageAndTheKnownOnesAreListed) {
    const ProgramResult run = Run({"tree", "--type", "Joint", "hero.qeli"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.find("qeli: --type: There is no type \"Joint\". The types are QEL "
                              "aimConstraint anim animChannel animDiscontinuities animclip "),
              0u);
    EXPECT_NE(run.errors.find(" texture translationConstraint.\n"), std::string::npos);
}

TEST_F(QeliTree, ADepthIsANumberFrom0) {
    ExpectWrongUsage({"tree", "hero.qeli", "--depth=-1"}, "--depth: -1 is below 0");
    ExpectWrongUsage({"tree", "hero.qeli", "--depth", "x"}, "Could not convert: --depth = x");
    ExpectWrongUsage({"tree", "hero.qeli", "--depth", "1.5"}, "Could not convert: --depth = 1.5");
}

TEST_F(QeliTree, NamesAreShownInUtf8AndWithoutControlCharacters) {
    folder.WriteFile("a.qeli", Document("<scene><node name=\"B\xE4r&#10;\"/></scene>"));
    EXPECT_EQ(Run({"tree", "a.qeli", "--type", "node"}).output, "node B\xC3\xA4r\\x0A\n");
}

TEST_F(QeliTree, ADeepTreeIsShownToTheBottom) {
    constexpr int kDepth = 1500;
    std::string body = "<scene>";
    for (int i = 0; i < kDepth; ++i) body += "<node name=\"n\">";
    for (int i = 0; i < kDepth; ++i) body += "</node>";
    folder.WriteFile("deep.qeli", Document(body + "</scene>"));
    const ProgramResult run = Run({"tree", "deep.qeli"});
    EXPECT_EQ(run.status, 0);
    // Behind 64 levels the depth stands as a number, so that the listing stays in proportion.
    const std::string lastLine = "\n" + std::string(128, ' ') + "[1501] node n\n";
    EXPECT_EQ(run.output.substr(run.output.size() - lastLine.size()), lastLine);
}

TEST_F(QeliTree, ABadDocumentHasNoTree) {
    const ProgramResult run = Run({"tree", "none.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "none.qeli: error: File open error: \"none.qeli\": No such file or directory\n");
}

TEST_F(QeliTree, AnAnswerThatMeetsAClosedStandardOutputIsAFailure) {
    if (kIsWindows) GTEST_SKIP() << "what is closed there is not to be told from what never was";
    const std::string reason =
        "standard output: error: The file cannot be written: Bad file descriptor\n";
    using Words = std::vector<std::string>;
    for (const Words& words : {Words{"tree", "hero.qeli"}, Words{"check", "hero.qeli"},
                               Words{"convert", "hero.qeli", "-"}}) {
        const ProgramResult run = folder.Run("qeli", words, {}, ">&-");
        EXPECT_EQ(run.status, 1) << words[0];
        EXPECT_EQ(run.errors, reason) << words[0];
    }
    // Here the answer is a file.
    EXPECT_EQ(folder.Run("qeli", {"convert", "hero.qeli", "out.qeli"}, {}, ">&-").status, 0);
}

TEST_F(QeliTree, AFullStandardOutputIsAFailure) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
    const ProgramResult full = folder.Run("qeli", {"tree", "hero.qeli"}, {}, ">/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors,
              "standard output: error: The file cannot be written: No space left on device\n");
}

}  // namespace
