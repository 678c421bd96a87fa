#include "Support/ThisSystem.h"
#include "VokLib/SceneTestTools.h"

#include <Platform/Paths.h>
#include <VokLib/Text/VokPathText.h>

using namespace SceneTest;
using namespace VokPathText;

namespace {

const std::string kBase = "c:\\scenes\\a\\b.qeli";

Failure NoAbsolute(const std::string& path, const std::string& base) {
    return Plain("failed to construct absolute path from \"" + path + "\" relative to \"" + base +
                 "\"");
}

}  // namespace

TEST(PathText, RelativePathClimbsToTheCommonFolder) {
    EXPECT_EQ(MakeRelativePath("C:/Scenes/tex/t.dds", kBase), "..\\tex/t.dds");
    EXPECT_EQ(MakeRelativePath("c:\\scenes\\a\\t.dds", kBase), "t.dds");
    EXPECT_EQ(MakeRelativePath("c:\\t.dds", kBase), "..\\..\\t.dds");
    EXPECT_EQ(MakeRelativePath("c:\\scenes\\ab\\t.dds", kBase), "..\\ab\\t.dds");
    EXPECT_EQ(MakeRelativePath("/p/tex/t.dds", "/p/scenes/x.qeli"), "..\\tex/t.dds");
    EXPECT_EQ(MakeRelativePath("\\\\server\\share\\t.dds", "//server/share/x.qeli"), "t.dds");
}

TEST(PathText, PathWithoutACommonFolderComesBackUnchanged) {
    EXPECT_EQ(MakeRelativePath("d:\\tex\\t.dds", kBase), "d:\\tex\\t.dds");
    EXPECT_EQ(MakeRelativePath("t.dds", kBase), "t.dds");
    EXPECT_EQ(MakeRelativePath("/x/t.dds", "/y/b.qeli"), "/x/t.dds");
    EXPECT_EQ(MakeRelativePath("", kBase), "");
    EXPECT_EQ(MakeRelativePath("/", "//x/y"), "/");
    EXPECT_EQ(MakeRelativePath("c:\\scenes\\t.dds", ""), "c:\\scenes\\t.dds");
}

TEST(PathText, CompletePathStaysAsItStands) {
    EXPECT_EQ(MakeAbsolutePath("d:\\x", kBase), "d:\\x");
    EXPECT_EQ(MakeAbsolutePath("x/y:z", kBase), "x/y:z");
    EXPECT_EQ(MakeAbsolutePath("\\\\server\\x", kBase), "\\\\server\\x");
    EXPECT_EQ(MakeAbsolutePath("///x", kBase), "///x");
}

TEST(PathText, PathFromTheRootTakesTheBasesDrive) {
    EXPECT_EQ(MakeAbsolutePath("\\x\\y", kBase), "c:\\x\\y");
    EXPECT_EQ(MakeAbsolutePath("/x", kBase), "c:/x");
    EXPECT_EQ(FailureOf([] { MakeAbsolutePath("\\x", "a\\b"); }), NoAbsolute("\\x", "a\\b"));
}

TEST(PathText, BaseThatBeginsWithASlashHasNoDrive) {
    EXPECT_EQ(MakeAbsolutePath("/x/y", "/home/b.qeli"), "/x/y");
    EXPECT_EQ(MakeAbsolutePath("/x", "/home/a:b/"), "/x");
    EXPECT_EQ(TidyAbsolutePath("/x//y/../z", "/home/b.qeli"), "/x/z");
    EXPECT_EQ(TidyAbsolutePath("tex/./t.dds", "/home/b.qeli"), "/home/tex/t.dds");
    EXPECT_EQ(TidyAbsolutePath("..\\t.dds", "/home/a\\"), "/home/t.dds");
    EXPECT_EQ(TidyAbsolutePath("x.qeli", "/"), "/x.qeli");
}

TEST(PathText, OtherPathsStandInTheBasesFolder) {
    EXPECT_EQ(MakeAbsolutePath("t.dds", kBase), "c:\\scenes\\a\\t.dds");
    EXPECT_EQ(MakeAbsolutePath("", kBase), "c:\\scenes\\a\\");
    EXPECT_EQ(MakeAbsolutePath("x", "a/b"), "a\\x");
    EXPECT_EQ(FailureOf([] { MakeAbsolutePath("x", "b.qeli"); }), NoAbsolute("x", "b.qeli"));
    EXPECT_EQ(FailureOf([] { MakeAbsolutePath("", ""); }), NoAbsolute("", ""));
}

TEST(PathText, TidyPathHasNoParentsAndNoDoubledSeparators) {
    EXPECT_EQ(TidyAbsolutePath("a\\\\b\\..\\c", "c:\\d\\e"), "c:\\d\\a\\c");
    EXPECT_EQ(TidyAbsolutePath("a/b/../../c", "c:\\d\\e"), "c:\\d\\c");
    EXPECT_EQ(TidyAbsolutePath("..\\\\\\x", "c:\\d\\e"), "c:\\x");
    EXPECT_EQ(TidyAbsolutePath(".\\x\\.\\y", "c:\\d\\e"), "c:\\d\\x\\y");
    EXPECT_EQ(TidyAbsolutePath("x\\..", "c:\\d\\e"), "c:\\d");
    // What three dots are is the system's matter on its own drives.
    if (!kIsWindows) {
        EXPECT_EQ(TidyAbsolutePath("...\\x", "c:\\d\\e"), "c:\\d\\...\\x");
    }
    EXPECT_EQ(TidyAbsolutePath("/x/y", "c:\\d\\e"), "c:\\x\\y");
    EXPECT_EQ(TidyAbsolutePath("c://x///y", "q:\\e"), "c:\\x\\y");
}

TEST(PathText, ServerAndShareStay) {
    EXPECT_EQ(TidyAbsolutePath("\\\\\\server\\share\\a\\..\\x", "c:\\d\\e"),
              "\\\\server\\share\\x");
    EXPECT_EQ(TidyAbsolutePath("\\\\server\\share\\x", "/d/e"), "\\\\server\\share\\x");
}

TEST(PathText, ParentsStopAtTheRoot) {
    const Failure expected = Plain("Too many \"..\" in relative path.");
    EXPECT_EQ(FailureOf([] { TidyAbsolutePath("..\\..\\..\\x", "c:\\a\\b"); }), expected);
    EXPECT_EQ(FailureOf([] { TidyAbsolutePath("../../x", "c:\\a\\b"); }), expected);
    EXPECT_EQ(FailureOf([] { TidyAbsolutePath("/../x", "/a/b"); }), expected);
    EXPECT_EQ(FailureOf([] { TidyAbsolutePath("c:..\\x", "c:\\a\\b"); }), expected);
    EXPECT_EQ(TidyAbsolutePath("..\\x", "c:\\a\\b"), "c:\\x");
}

TEST(PathText, PathThatThePlatformRefusesIsNamed) {
    if (kIsWindows) GTEST_SKIP() << "a name on no drive is not asked of the system";
    const std::string name(100000, 'x');
    EXPECT_EQ(FailureOf([&] { TidyAbsolutePath("/" + name, "/b"); }),
              Plain("failed to tidy up absolute path \"/" + name + "\""));
}

TEST(PathText, RelativeBaseCountsFromTheWorkingFolder) {
    const std::string folder = Platform::CurrentDirectory().value();
    if (Platform::BackslashSeparates()) GTEST_SKIP();
    EXPECT_EQ(TidyAbsolutePath("x.qeli", "sub\\b.qeli"), folder + "/sub/x.qeli");
}
