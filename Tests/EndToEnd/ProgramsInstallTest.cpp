#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

namespace {

constexpr const char* kUse = R"(#include <skeleton/skeleton.h>
int main(void) { return skeleton_hash_joint_name("ns:Hips") == 0x811C56D0u ? 0 : 1; }
)";

/// This build installed into a fresh folder named "tree".
class Install : public testing::Test {
  protected:
    void SetUp() override {
        if (kIsWindows || Shell("cc --version >compiler 2>&1") != 0)
            GTEST_SKIP() << "no C compiler here";
        ASSERT_EQ(Shell("'" RIGBAKE_CMAKE "' --install '" RIGBAKE_BUILD
                        "' --prefix \"$PWD/tree\" >log 2>&1"),
                  0)
            << folder.ReadFile("log");
    }
    int Shell(const std::string& command) const {
        return std::system(("cd '" + folder.GetPath().string() + "' && " + command).c_str());
    }
    /// The installed file that ends so; empty without one.
    std::string Find(const std::string& end) const {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(folder.GetPath() / "tree"))
            if (entry.path().generic_string().ends_with(end)) return entry.path().string();
        return {};
    }

    RunFolder folder;
};

}  // namespace

TEST_F(Install, PutsProgramsHeadersAndManualsInPlace) {
    for (const char* file :
         {"/bin/rigbake", "/bin/qeli", "/bin/skel", "/bin/QelHashProxy.exe",
          "/include/skeleton/skeleton.h", "/include/skeleton/skeleton_verify.h", "/man1/rigbake.1",
          "/man1/qeli.1", "/man1/skel.1", "/skeleton-file.md", "/skel-dump.schema.json"})
        EXPECT_NE(Find(file), "") << file;
    EXPECT_EQ(Shell("tree/bin/skel --version >version"), 0);
    EXPECT_EQ(folder.ReadFile("version"), "skel 1.28.3\n");
}

TEST_F(Install, AnOutsideProjectFindsTheHeaderWithCMake) {
    std::filesystem::create_directory(folder.GetPath() / "outside");
    folder.WriteFile("outside/use.c", kUse);
    folder.WriteFile("outside/CMakeLists.txt", R"(cmake_minimum_required(VERSION 3.25)
project(Outside LANGUAGES C)
find_package(rigbake 1.28 REQUIRED)
add_executable(use use.c)
target_link_libraries(use PRIVATE rigbake::skeleton)
target_compile_options(use PRIVATE -std=c11 -Wall -Wextra -Werror)
)");
    ASSERT_EQ(
        Shell("'" RIGBAKE_CMAKE "' -G Ninja -S outside -B built -DCMAKE_PREFIX_PATH=\"$PWD/tree\" "
              ">log 2>&1 && '" RIGBAKE_CMAKE "' --build built >>log 2>&1"),
        0)
        << folder.ReadFile("log");
    EXPECT_EQ(Shell("built/use"), 0);
}

TEST_F(Install, AMovedTreeServesPkgConfig) {
    if (Shell("pkg-config --version >log 2>&1") != 0) GTEST_SKIP() << "no pkg-config here";
    folder.WriteFile("use.c", kUse);
    std::filesystem::create_directory(folder.GetPath() / "moved");
    std::filesystem::rename(folder.GetPath() / "tree", folder.GetPath() / "moved/tree");
    EXPECT_EQ(Shell("export PKG_CONFIG_PATH=$(dirname \"$(find \"$PWD/moved\" -name rigbake.pc)\") "
                    "&& pkg-config --modversion rigbake >version && "
                    "eval cc use.c $(pkg-config --cflags rigbake) -o use 2>log && ./use"),
              0)
        << folder.ReadFile("log");
    EXPECT_EQ(folder.ReadFile("version"), "1.28.3\n");
}

TEST_F(Install, ManualsNameEveryFlagOfTheirPrograms) {
    const auto expectFlags = [this](const std::string& manual, const std::string& help) {
        const std::string path = Find("/man1/" + manual);
        std::string text =
            folder.ReadFile(std::filesystem::relative(path, folder.GetPath()).string());
        text = std::regex_replace(text, std::regex(R"(\\-)"), "-");
        static const std::regex kFlag("--?[A-Za-z][A-Za-z-]+");
        std::size_t count = 0;
        for (std::sregex_iterator it(help.begin(), help.end(), kFlag), end; it != end; ++it) {
            const std::string flag = it->str();
            const char before = it->position() == 0 ? ' ' : help[it->position() - 1];
            if (before != ' ' && before != '(' && before != ',') continue;
            ++count;
            EXPECT_NE(text.find(flag), std::string::npos) << manual << " " << flag;
        }
        EXPECT_GE(count, 2u) << help;
    };
    std::string help = folder.Rigbake({}).output;
    expectFlags("rigbake.1", help.substr(help.find('\n')));
    for (const char* command : {"check", "dump", "diff", "header"})
        expectFlags("skel.1", folder.Run("skel", {command, "--help"}).output + " --version");
    for (const char* command : {"convert", "check", "tree", "files"})
        expectFlags("qeli.1", folder.Run("qeli", {command, "--help"}).output + " --version");
}
