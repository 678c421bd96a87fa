#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

class QeliLimits : public testing::Test {
  protected:
    ProgramResult Run(const std::string& command, const std::string& document) {
        folder.WriteFile("in.qeli", document);
        folder.WriteFile("out.qeli", "old");
        std::vector<std::string> arguments = {command, "in.qeli"};
        if (command == "convert") arguments.push_back("out.qeli");
        return folder.Run("qeli", arguments);
    }

    static std::string Repeat(const std::string& text, int count) {
        std::string repeated;
        for (int i = 0; i < count; ++i) repeated += text;
        return repeated;
    }

    /// Makes a folder with a name of 3.8 KB, and gives that with a separator at its end.
    std::string MakeLongFolder() const {
        std::string name;
        while (name.size() < 3800) name += std::string(200, 'd') + "/";
        std::filesystem::create_directories(folder.GetPath() / name);
        return name;
    }

    RunFolder folder;
};

TEST_F(QeliLimits, ShortLinksThroughALongNameDoNotFillTheDisk) {
    const std::string name(1000000, 'y');
    const std::string scene = "<scene><instance name=\"i\" target=\"|" + name +
                              "\"/></scene><scene name=\"" + name +
                              "\"><joint name=\"a\"/></scene><objset name=\"s\" type=\"set\">" +
                              Repeat("<member path=\"||a\" membership=\"\"/>", 400) + "</objset>";
    const std::string document = Document(scene);
    const ProgramResult run = Run("convert", document);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "in.qeli: error: The document would be written with more than " +
                  std::to_string((64u << 20) + 32 * document.size()) +
                  " bytes: its links are written with the whole paths of their targets, and these "
                  "are too long\n");
    EXPECT_EQ(folder.ReadFile("out.qeli"), "old");
}

TEST_F(QeliLimits, ShortFileNamesInAFolderWithALongNameDoNotEither) {
    if (kIsWindows) GTEST_SKIP() << "left out: no folder has so long a name here";
    const std::string deep = MakeLongFolder();
    const std::string in = deep + "in.qeli";
    const std::string document =
        Document("<scene/>" + Repeat("<reference name=\"\" uri=\"x\" namespace=\"\"/>", 30000));
    folder.WriteFile(in, document);
    const ProgramResult run = folder.Run("qeli", {"convert", in, "out.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              in + ": error: The document would be written with more than " +
                  std::to_string((64u << 20) + 32 * document.size()) +
                  " bytes: its file names are written as they lead from the new place, and these "
                  "are too long\n");
    EXPECT_FALSE(folder.Has("out.qeli"));
}

TEST_F(QeliLimits, NamesOfFilesThatAreListedWithALongFolderAreLimited) {
    if (kIsWindows) GTEST_SKIP() << "left out: no folder has so long a name here";
    const std::string deep = MakeLongFolder();
    const std::string in = deep + "in.qeli";
    std::string names;
    std::size_t listed = 0;
    for (int i = 10000; i < 40000; ++i) {
        names += "<reference name=\"\" uri=\"" + std::to_string(i) + "\" namespace=\"\"/>";
        listed += deep.size() + 5;
    }
    const auto document = [&](std::size_t filler) {
        return Document("<scene/>" + names + "<!--" + std::string(filler, 'c') + "-->");
    };
    // A byte of the document is worth 32 of the limit.
    const std::size_t filler = (listed - (64u << 20) + 31) / 32 - document(0).size();
    folder.WriteFile(in, document(filler));
    const ProgramResult most = folder.Run("qeli", {"files", in});
    EXPECT_EQ(most.status, 0);
    EXPECT_EQ(most.output.size(), listed + 30000);
    folder.WriteFile(in, document(filler - 1));
    const std::string words = in +
                              ": error: The names of its files, with the document's folder in "
                              "front of them, come to more than " +
                              std::to_string((64u << 20) + 32 * document(filler - 1).size()) +
                              " bytes\n";
    const ProgramResult run = folder.Run("qeli", {"files", in});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, words);
    EXPECT_TRUE(run.output.empty());
    EXPECT_EQ(folder.Run("qeli", {"files", in, "--depfile", "d", "--target", "t"}).errors, words);
    EXPECT_FALSE(folder.Has("d"));
}

/// Links of few bytes to a target behind a name of `nameSize`; written, they name the whole path. A
/// filler is written as it stands, a comment is not written at all.
std::string ManyShortLinks(int nameSize, std::size_t filler, std::size_t comment) {
    std::string members;
    for (int i = 0; i < 240; ++i) members += "<member path=\"||a\" membership=\"\"/>";
    const std::string name(static_cast<std::size_t>(nameSize), 'y');
    return Document("<scene><instance name=\"i\" target=\"|" + name + "\"/></scene><scene name=\"" +
                    name + "\"><joint name=\"a\"/></scene><objset name=\"" +
                    std::string(filler, 's') + "\" type=\"set\">" + members + "</objset><!--" +
                    std::string(comment, 'c') + "-->");
}

TEST_F(QeliLimits, AWrittenDocumentMayReachTheLimitToTheByte) {
    const auto excess = [](const std::string& written, const std::string& document) {
        return static_cast<long>(written.size()) -
               static_cast<long>((64u << 20) + 32 * document.size());
    };
    const int nameSize = 400000;
    std::string document = ManyShortLinks(1000, 0, 0);
    ASSERT_EQ(Run("convert", document).status, 0);
    const std::size_t small = folder.ReadFile("out.qeli").size();
    document = ManyShortLinks(2000, 0, 0);
    ASSERT_EQ(Run("convert", document).status, 0);
    const std::size_t perThousand = folder.ReadFile("out.qeli").size() - small;
    const std::string bare = ManyShortLinks(nameSize, 0, 0);
    const long over = excess(std::string(small + 399 * perThousand, ' '), bare);
    ASSERT_GT(over, 31 * 32);
    for (const long past : {0, 1}) {
        // A byte of the filler adds one to what is written and 32 to the limit, a comment's
        // only 32.
        const long filler = ((past - over) % 32 + 32) % 32;
        const long comment = (over - 31 * filler - past) / 32;
        document = ManyShortLinks(nameSize, static_cast<std::size_t>(filler),
                                  static_cast<std::size_t>(comment));
        const ProgramResult run = Run("convert", document);
        EXPECT_EQ(run.status, past) << run.errors;
        if (past == 0) {
            EXPECT_EQ(excess(folder.ReadFile("out.qeli"), document), 0);
        }
    }
}

TEST_F(QeliLimits, DefaultsThatAreWrittenOutAreFarFromTheLimit) {
    for (const std::string element : {"camera", "light", "joint"}) {
        const ProgramResult run =
            Run("convert",
                Document("<scene>" + Repeat("<" + element + " name=\"\"/>", 200) + "</scene>"));
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_LT(folder.ReadFile("out.qeli").size(), 20 * folder.ReadFile("in.qeli").size());
    }
}

TEST_F(QeliLimits, DeepObjectsTellTheirLevelInPlaceOfBlanks) {
    const int depth = 5000;
    const ProgramResult run = Run("tree", Document("<scene>" + Repeat("<node name=\"a\">", depth) +
                                                   Repeat("</node>", depth) + "</scene>"));
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.output.find("\n" + std::string(128, ' ') + "node a\n"), std::string::npos);
    EXPECT_NE(run.output.find("\n" + std::string(128, ' ') + "[65] node a\n"), std::string::npos);
    EXPECT_EQ(run.output.find(std::string(129, ' ')), std::string::npos);
}

TEST_F(QeliLimits, ManyLinksOfDeepOwnersThatLeadNowhereAreCounted) {
    // The texts of all of them would take eight gigabytes, more than a test may.
    const std::string name(400, 'x');
    std::string links;
    for (int i = 0; i < 20000; ++i)
        links += "<instance name=\"i" + std::to_string(i) + "\" target=\"||no\"/>";
    const ProgramResult run =
        Run("check", Document("<scene>" + Repeat("<node name=\"" + name + "\">", 1000) + links +
                              Repeat("</node>", 1000) + "</scene>"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors.find("in.qeli: error: Unresolved VokObjLinks\n"), 0u);
    const std::string end = "|i10013->||no\n    and 19980 more\n";
    ASSERT_GT(run.errors.size(), end.size());
    EXPECT_EQ(run.errors.substr(run.errors.size() - end.size()), end);
}

TEST_F(QeliLimits, AnUpVectorThatOnlyABakeSeesIsNotDropped) {
    const auto document = [](const std::string& up) {
        return Document(
            "<scene><joint name=\"a\"><joint name=\"b\"/><joint name=\"c\"/></joint></scene>"
            "<aimConstraint name=\"aim\" constrain=\"||a|b\"><globalup>" +
            up +
            "</globalup><upobject name=\"||a\" transform=\"translate\"/>"
            "<target name=\"||a|c\" weight=\"1\"/></aimConstraint>");
    };
    const ProgramResult run = Run("convert", document("0 1 0"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "in.qeli: error: The written document would be baked otherwise: the format has no "
              "globalup beside an upobject whose transform is \"translate\" (object |aim)\n");
    EXPECT_EQ(folder.ReadFile("out.qeli"), "old");
    EXPECT_EQ(Run("convert", document("0 0 0")).status, 0);
}

TEST_F(QeliLimits, ASignThatOnlyABakeSeesIsNotDroppedSilently) {
    const auto document = [](const std::string& ofB, const std::string& ofC) {
        return Document("<scene><joint name=\"a\"><joint name=\"b\">" + ofB +
                        "</joint><joint name=\"c\">" + ofC + "</joint></joint></scene>");
    };
    const std::string words =
        "in.qeli: warning: The written document may be baked otherwise: the format leaves out "
        "zeros, and with them the sign of a -0";
    for (const std::string element :
         {"translate", "rotEul", "rotAxisEul", "shear", "rotatePivot", "rotatePivotTranslation",
          "scalePivot", "scalePivotTranslation"}) {
        const ProgramResult run =
            Run("convert", document("<" + element + ">0 0 -0</" + element + ">", ""));
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors, words + " (object ||a|b)\n");
    }
    EXPECT_EQ(
        Run("convert", document("<translate>-0 0 0</translate>", "<rotEul>0 -0 0</rotEul>")).errors,
        words + " (in 2 objects) (object ||a|b)\n");
    EXPECT_EQ(
        Run("convert", document("<translate>0 0 0</translate>", "<rotEul>1 -0 0</rotEul>")).errors,
        "");
}

TEST_F(QeliLimits, AnEntityOfTheDocumentsOwnIsExplained) {
    std::string document = Document("<scene><joint name=\"&e;\"/></scene>");
    document.insert(document.find("<QEL"), "<!DOCTYPE QEL [<!ENTITY e \"x\">]>\n");
    const ProgramResult run = Run("check", document);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "in.qeli:4:27: error: Libxml2 parse error: 26 in \"in.qeli\" Line 4 Column 27: an "
              "entity that is not one of XML's own five; entities that a document declares itself "
              "are not read (object |)\n");
}

}  // namespace
