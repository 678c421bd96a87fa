#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "Support/MemoryLimit.h"

namespace {

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The example loader, built as an engine's strict compiler would, under the sanitizers.
class RuntimeExample : public testing::Test {
  protected:
    void SetUp() override {
        const std::string root = RIGBAKE_SOURCE_ROOT;
        if (kIsWindows || Shell("cc --version >compiler 2>&1") != 0)
            GTEST_SKIP() << "no C compiler here";
        ASSERT_EQ(Shell("cc -std=c11 -g -Wall -Wextra -Wpedantic -Werror "
                        "-fsanitize=address,undefined -fno-sanitize-recover=all -I '" +
                        root + "/Runtime' '" + root +
                        "/Examples/runtime/load_skeleton.c' -o load 2>errors"),
                  0)
            << ReadAll(folder.GetPath() / "errors");
    }
    int Shell(const std::string& command) const {
        return std::system(
            (kShellWithoutLimit + ("cd '" + folder.GetPath().string() + "' && ") + command)
                .c_str());
    }
    /// The example's output; both streams.
    std::string Load(const std::string& file, bool isSound) const {
        EXPECT_EQ(Shell("./load '" + file + "' >out 2>&1") == 0, isSound) << file;
        return folder.ReadFile("out");
    }
    static std::string Seed(const std::string& name) {
        return RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/" + name;
    }

    RunFolder folder;
};

}  // namespace

TEST_F(RuntimeExample, LoadsBothByteOrdersAlike) {
    const std::string little = Load(Seed("parts-little"), true);
    EXPECT_EQ(Load(Seed("parts-big"), true), little);
    EXPECT_EQ(little.substr(0, little.find('\n')), "signature 0x3DD3DFD4, 11 joints, hips are 0");
    for (const char* line :
         {"\njoint 4 at -0.3 1.3 0\n", "\nwithout level row 0: 8 joints\n",
          "\nitem 0: channel type 1 of 1 is 0.35 at 1\n", "\nitem 2: joint 3 aims at joint 8\n"})
        EXPECT_NE(little.find(line), std::string::npos) << line << little;
}

TEST_F(RuntimeExample, LoadsTheOtherExamples) {
    EXPECT_NE(Load(Seed("biped"), true).find("hips are 0\n"), std::string::npos);
    EXPECT_NE(Load(Seed("roots"), true).find("4 joints, hips are -1\n"), std::string::npos);
}

TEST_F(RuntimeExample, RefusesEveryTruncatedFileWithoutASanitizerReport) {
    const std::string bytes = ReadAll(Seed("parts-little"));
    for (std::size_t i = 0; i < 57; ++i) {
        const std::size_t size = i * bytes.size() / 57;
        folder.WriteFile("short", std::string_view(bytes).substr(0, size));
        const std::string text = Load("short", false);
        EXPECT_EQ(text.find("short: 0x"), 0u) << size << ": " << text;
        EXPECT_EQ(text.find('\n'), text.size() - 1) << text;
    }
}

TEST_F(RuntimeExample, RefusesADamagedFileWithItsPlace) {
    std::string bytes = ReadAll(Seed("parts-big"));
    bytes[0x6B] = 9;
    folder.WriteFile("damaged", bytes);
    EXPECT_EQ(Load("damaged", false), "damaged: 0x006A: joints[7].parent is 9, not below 7\n");
    EXPECT_EQ(Load("absent", false), "absent: cannot be read\n");
}

TEST_F(RuntimeExample, WithoutAFileTellsItsUsage) {
    EXPECT_EQ(Shell("./load >out 2>errors; test $? -eq 2"), 0);
    EXPECT_EQ(folder.ReadFile("out"), "");
    EXPECT_EQ(folder.ReadFile("errors"), "Usage: load_skeleton FILE...\n");
}

TEST_F(RuntimeExample, TheHeaderIsSilentUnderStricterWarnings) {
    folder.WriteFile("use.c", "#include <skeleton/skeleton.h>\n");
    const std::string flags =
        " -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wundef -Wformat=2 "
        "-Werror -fsyntax-only -I '" RIGBAKE_SOURCE_ROOT "/Runtime' ";
    EXPECT_EQ(Shell("cc -std=c11 -Wstrict-prototypes" + flags + "use.c 2>errors"), 0)
        << folder.ReadFile("errors");
    // Only one of the compilers knows of casts that do nothing.
    if (Shell("c++ -Werror -Wuseless-cast -x c++ -fsyntax-only /dev/null 2>errors") == 0)
        folder.WriteFile("flags", "-Wuseless-cast");
    else
        folder.WriteFile("flags", "");
    EXPECT_EQ(
        Shell("c++ -std=c++11 -Wold-style-cast $(cat flags)" + flags + "-x c++ use.c 2>errors"), 0)
        << folder.ReadFile("errors");
}
