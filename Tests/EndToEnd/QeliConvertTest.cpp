#include "EndToEnd/QeliConvertRun.h"
#include "Support/ThisSystem.h"

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

std::vector<fs::path> SampleDocuments() {
    std::vector<fs::path> documents;
    for (const char* place : {"Examples", "Tests/Documents"}) {
        const fs::path root = fs::path(RIGBAKE_SOURCE_ROOT) / place;
        if (!fs::exists(root)) continue;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root))
            if (entry.path().extension() == ".qeli") documents.push_back(entry.path());
    }
    return documents;
}

std::string BodyOf(const std::string& document) {
    const std::string end = "</parseacceleration>\n";
    const std::size_t at = document.find(end);
    return at == std::string::npos ? std::string() : document.substr(at + end.size());
}

TEST_F(QeliConvert, ADocumentIsWrittenInTheFormatsLayout) {
    folder.WriteFile("in.qeli", Document("<scene><joint name='a'/></scene>"));
    ExpectConverted("in.qeli", "out.qeli");
    const std::string written = folder.ReadFile("out.qeli");
    EXPECT_EQ(written.substr(0, written.find("<freedoms")),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
              "<QEL xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xmlns=\"http://qel.example/ns/qeli/1_28_1/qeli\" "
              "xsi:schemaLocation=\"http://qel.example/ns/qeli/1_28_1/qeli "
              "http://qel.example/ns/qeli/1_28_1/qeli.xsd\" filenameform=\"qelirelative\">\n"
              "<parseacceleration>\n<filereferences>\n</filereferences>\n</parseacceleration>\n"
              "<scene>\n<joint name=\"a\">\n");
    EXPECT_EQ(FileNames(), (Names{"in.qeli", "out.qeli"}));
}

TEST_F(QeliConvert, EverySampleComesThroughUnharmed) {
    const std::vector<fs::path> documents = SampleDocuments();
    EXPECT_GE(documents.size(), 3u);
    for (const fs::path& document : documents) {
        SCOPED_TRACE(document.string());
        ExpectConverted(document.string(), "once.qeli");
        ExpectConverted("once.qeli", "twice.qeli");
        EXPECT_EQ(folder.ReadFile("once.qeli"), folder.ReadFile("twice.qeli"));

        const ProgramResult before =
            folder.Rigbake({"-in", document.string(), "-out", "before.bin", "-autoupdate", "1"});
        const ProgramResult after = folder.Rigbake({"-in", "once.qeli", "-out", "after.bin"});
        EXPECT_EQ(before.status, after.status) << after.output;
        if (folder.Has("before.bin")) {
            EXPECT_EQ(folder.ReadFile("before.bin"), folder.ReadFile("after.bin"));
        }
        fs::remove(folder.GetPath() / "before.bin");
        fs::remove(folder.GetPath() / "after.bin");
    }
}

TEST_F(QeliConvert, TheExamplesAreTheirOwnConversion) {
    for (const fs::path& document : SampleDocuments()) {
        if (document.parent_path().filename() != "Examples") continue;
        ExpectConverted(document.string(), "out.qeli");
        fs::copy_file(document, folder.GetPath() / "original.qeli",
                      fs::copy_options::overwrite_existing);
        EXPECT_EQ(folder.ReadFile("out.qeli"), folder.ReadFile("original.qeli")) << document;
    }
}

TEST_F(QeliConvert, ADocumentMayReplaceItself) {
    folder.WriteFile("a.qeli", Document("<scene> <joint name='a'/> </scene>"));
    ExpectConverted("a.qeli", "other.qeli");
    ExpectConverted("a.qeli", "a.qeli");
    EXPECT_EQ(folder.ReadFile("a.qeli"), folder.ReadFile("other.qeli"));
    EXPECT_EQ(FileNames(), (Names{"a.qeli", "other.qeli"}));
}

TEST_F(QeliConvert, AnOldVersionBecomesACurrentOne) {
    std::string old = OneJointDocument();
    folder.WriteFile("current.qeli", old);
    old.replace(old.find("1_28_1"), 6, "1_20_0");
    folder.WriteFile("old.qeli", old);
    ExpectConverted("old.qeli", "new.qeli");
    ExpectConverted("current.qeli", "same.qeli");
    EXPECT_EQ(folder.ReadFile("new.qeli"), folder.ReadFile("same.qeli"));
}

TEST_F(QeliConvert, TextsKeepEveryCharacterThatTheFormatHas) {
    folder.WriteFile("in.qeli",
                     Document("<scene><joint name=\"&quot;&apos;&amp;&gt; B\xE4r\"/></scene>"));
    ExpectConverted("in.qeli", "out.qeli");
    EXPECT_NE(folder.ReadFile("out.qeli").find("\"&quot;&apos;&amp;> B\xE4r\""), std::string::npos);
}

TEST_F(QeliConvert, StandardOutputGetsTheSameBytes) {
    folder.WriteFile("in.qeli", OneJointDocument());
    ExpectConverted("in.qeli", "out.qeli");
    EXPECT_EQ(Run("in.qeli", "-").output, folder.ReadFile("out.qeli"));
    EXPECT_FALSE(folder.Has("-"));
}

constexpr const char* kReferences =
    "<scene/>"
    "<reference name=\"a\" uri=\"../lib/b\xE4r.qeli\" namespace=\"n\"/>"
    "<reference name=\"b\" uri=\"/shared/x.qeli\" namespace=\"n\"/>"
    "<reference name=\"c\" uri=\"c:\\x\\y.qeli\" namespace=\"n\"/>"
    "<reference name=\"d\" uri=\"tex\\own.qeli\" namespace=\"n\"/>";

TEST_F(QeliConvert, InTheSameFolderFileNamesStayAsTheyAre) {
    fs::create_directory(folder.GetPath() / "art");
    folder.WriteFile("art/in.qeli", Document(kReferences));
    ExpectConverted("art/in.qeli", "./art/../art/out.qeli");
    EXPECT_EQ(BodyOf(folder.ReadFile("art/out.qeli")),
              "<scene>\n</scene>\n"
              "<reference name=\"a\" uri=\"../lib/b\xE4r.qeli\" namespace=\"n\" />\n"
              "<reference name=\"b\" uri=\"/shared/x.qeli\" namespace=\"n\" />\n"
              "<reference name=\"c\" uri=\"c:\\x\\y.qeli\" namespace=\"n\" />\n"
              "<reference name=\"d\" uri=\"tex\\own.qeli\" namespace=\"n\" />\n</QEL>\n");
}

TEST_F(QeliConvert, InAnotherFolderFileNamesLeadToTheSameFiles) {
    for (const char* name : {"art", "Art", "out", "out/deep"})
        fs::create_directory(folder.GetPath() / name);
    folder.WriteFile("art/in.qeli", Document(kReferences));
    ExpectConverted("art/in.qeli", "out/deep/out.qeli");
    const std::string moved = folder.ReadFile("out/deep/out.qeli");
    EXPECT_EQ(BodyOf(moved),
              "<scene>\n</scene>\n"
              "<reference name=\"a\" uri=\"../../lib/b\xE4r.qeli\" namespace=\"n\" />\n"
              "<reference name=\"b\" uri=\"/shared/x.qeli\" namespace=\"n\" />\n"
              "<reference name=\"c\" uri=\"c:\\x\\y.qeli\" namespace=\"n\" />\n"
              "<reference name=\"d\" uri=\"../../art/tex/own.qeli\" namespace=\"n\" />\n</QEL>\n");
    EXPECT_NE(moved.find("<file uri=\"../../art/tex/own.qeli\" />"), std::string::npos);
    const auto files = [this](const char* document) {
        return folder.Run("qeli", {"files", document}).output;
    };
    EXPECT_EQ(files("out/deep/out.qeli"), files("art/in.qeli"));

    // Where letter case does not matter, these are one folder.
    ExpectConverted("art/in.qeli", "Art/out.qeli");
    const std::string own = kIsWindows ? "Art/tex/own.qeli" : folder.Path("art/tex/own.qeli");
    EXPECT_EQ(files("Art/out.qeli"),
              "lib/b\xC3\xA4r.qeli\n/shared/x.qeli\nc:/x/y.qeli\n" + own + "\n");
}

TEST_F(QeliConvert, InAFolderWithAnotherDriveLetterCaseFileNamesStay) {
    if (!kIsWindows) GTEST_SKIP() << "there are no drives";
    folder.WriteFile("in.qeli", Document(kReferences));
    ExpectConverted("in.qeli", "same.qeli");
    std::string out = folder.Path("other.qeli");
    out[0] ^= 'a' ^ 'A';
    ExpectConverted("in.qeli", out);
    EXPECT_EQ(folder.ReadFile("other.qeli"), folder.ReadFile("same.qeli"));
}

TEST_F(QeliConvert, AFileWhoseFullNameIsTooLongIsNotWritten) {
    std::string deep;
    for (int i = 0; i < 84; ++i) deep += "\xE9\xAA\xA8";  // fewer letters than bytes
    fs::create_directory(Platform::ToPath(folder.Path(deep)));
    folder.WriteFile("in.qeli", Document(kReferences));
    const std::string out = deep + "/out.qeli";
    if (!kIsWindows) {
        ExpectConverted("in.qeli", out);
        return;
    }
    ExpectFailure(
        "in.qeli", out,
        out +
            ": error: The file cannot be written: Failed to retrieve current "
            "working directory, or its full name is longer than this system's names may be");
    EXPECT_FALSE(folder.Has(out));
}

TEST_F(QeliConvert, ABadDocumentLeavesTheOldFile) {
    folder.WriteFile("out.qeli", "old");
    folder.WriteFile("bad.qeli", Document("<scene><jiont name=\"a\"/></scene>"));
    ExpectFailure("bad.qeli", "out.qeli", "bad.qeli:3:23: error: Unknown tag \"jiont\" (object |)");
    EXPECT_EQ(folder.ReadFile("out.qeli"), "old");
    EXPECT_EQ(FileNames(), (Names{"bad.qeli", "out.qeli"}));
}

TEST_F(QeliConvert, WhatCannotBeReadAgainIsNotWritten) {
    folder.WriteFile("out.qeli", "old");
    folder.WriteFile("lt.qeli", Document("<scene><joint name=\"a\"><joint name=\"x&lt;y\"/></joint>"
                                         "</scene>"));
    ExpectFailure(
        "lt.qeli", "out.qeli",
        "lt.qeli: error: The format cannot hold the character \"<\" in an attribute value "
        "(object ||a|x<y)");
    folder.WriteFile(
        "end.qeli",
        Document(
            "<scene><joint name=\"a\"><customData><attribute name=\"s\" type=\"string\">x]]&gt;"
            "</attribute></customData></joint></scene>"));
    ExpectFailure("end.qeli", "out.qeli",
                  "end.qeli: error: The format cannot hold \"]]>\" in a text (object ||a)");
    EXPECT_EQ(folder.ReadFile("out.qeli"), "old");
    EXPECT_EQ(FileNames(), (Names{"end.qeli", "lt.qeli", "out.qeli"}));
}

TEST_F(QeliConvert, WhatWouldBeReadOtherwiseIsNotWritten) {
    folder.WriteFile("lf.qeli", Document("<scene><joint name=\"x&#10;y\"/></scene>"));
    ExpectFailure("lf.qeli", "out.qeli",
                  "lf.qeli: error: The written document would be read otherwise: "
                  "'<joint name=\"x' as '<joint name=\"x y\">' (object ||x\\x0Ay)");
    folder.WriteFile("inf.qeli", Document("<scene><joint name=\"a\"><translate>1 1e999 0"
                                          "</translate></joint></scene>"));
    ExpectFailure("inf.qeli", "out.qeli",
                  "inf.qeli: error: The written document would be read otherwise: "
                  "'<translate>1.0 INF 0.0</translate>' as "
                  "'<translate>1.0 0.0 0.0</translate>' (object ||a)");
    EXPECT_EQ(FileNames(), (Names{"inf.qeli", "lf.qeli"}));
}

TEST_F(QeliConvert, AFolderIsNoFileToWrite) {
    folder.WriteFile("in.qeli", OneJointDocument());
    fs::create_directory(folder.GetPath() / "out");
    ExpectFailure("in.qeli", "out", "out: error: The file cannot be written: Is a directory");
    ExpectFailure("in.qeli", "none/out.qeli",
                  "none/out.qeli: error: The file cannot be written: No such file or directory");
    ExpectFailure("in.qeli", "", ": error: The file cannot be written: No such file or directory");
    EXPECT_EQ(FileNames(), (Names{"in.qeli", "out"}));
}

}  // namespace
