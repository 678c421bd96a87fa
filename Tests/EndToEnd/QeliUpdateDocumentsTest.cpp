#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

/// The files by themselves, as somebody who changes them looks at them.
class UpdateDocumentFiles : public testing::Test {
  protected:
    static bool HasProgram(const std::string& program) {
        return std::system((program + " --version >/dev/null 2>&1").c_str()) == 0;
    }
    static std::vector<std::filesystem::path> Files(const std::string& extension) {
        std::vector<std::filesystem::path> files;
        const std::filesystem::path root =
            std::filesystem::path(RIGBAKE_SOURCE_ROOT) / "Libraries/VokLib/Update/Documents";
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
            if (entry.path().extension() == extension) files.push_back(entry.path());
        return files;
    }
};

TEST_F(UpdateDocumentFiles, AreWellFormed) {
    if (!HasProgram("xmllint")) GTEST_SKIP() << "There is no xmllint here.";
    for (const char* extension : {".xslt", ".xml"})
        for (const auto& file : Files(extension))
            EXPECT_EQ(std::system(("xmllint --noout --nonet '" + file.string() + "'").c_str()), 0)
                << file;
}

TEST_F(UpdateDocumentFiles, TransformADocumentOfTheirVersion) {
    if (!HasProgram("xsltproc")) GTEST_SKIP() << "There is no xsltproc here.";
    const RunFolder folder;
    const std::string document = (folder.GetPath() / "a.xml").string();
    const std::string result = (folder.GetPath() / "b.xml").string();
    std::size_t count = 0;
    for (const auto& file : Files(".xslt")) {
        const std::string from = file.parent_path().filename().string();
        if (from == "Shared") continue;
        ++count;
        const std::string space =
            from == "1_0_3" ? "" : " xmlns=\"http://qel.example/ns/qeli/" + from + "/qeli\"";
        folder.WriteFile("a.xml", "<QEL" + space + "><scene/></QEL>");
        const std::string command =
            "xsltproc --nonet -o '" + result + "' '" + file.string() + "' '" + document + "' 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << file;
        EXPECT_NE(folder.ReadFile("b.xml").find("/qeli/" + file.stem().string() + "/qeli\""),
                  std::string::npos)
            << file;
    }
    EXPECT_EQ(count, 30u);
}

}  // namespace
