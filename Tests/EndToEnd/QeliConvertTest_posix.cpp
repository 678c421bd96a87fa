#include "EndToEnd/QeliConvertRun.h"

// Permissions of files, links, and devices and limits that let no more be written.

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

TEST_F(QeliConvert, ThePermissionsOfTheOldFileStay) {
    folder.WriteFile("in.qeli", OneJointDocument());
    folder.WriteFile("out.qeli", "old");
    const fs::path out = folder.GetPath() / "out.qeli";
    const fs::perms wanted = fs::perms::owner_all | fs::perms::group_read;
    fs::permissions(out, wanted);
    ExpectConverted("in.qeli", "out.qeli");
    EXPECT_EQ(fs::status(out).permissions(), wanted);
    EXPECT_NE(folder.ReadFile("out.qeli"), "old");
}

TEST_F(QeliConvert, ALinkGoesOnLeadingToTheFile) {
    folder.WriteFile("in.qeli", OneJointDocument());
    fs::create_directory(folder.GetPath() / "store");
    folder.WriteFile("store/real.qeli", "old");
    fs::create_symlink("store/real.qeli", folder.GetPath() / "out.qeli");
    fs::create_symlink("store/new.qeli", folder.GetPath() / "fresh.qeli");
    ExpectConverted("in.qeli", "out.qeli");
    ExpectConverted("in.qeli", "fresh.qeli");
    EXPECT_TRUE(fs::is_symlink(folder.GetPath() / "out.qeli"));
    EXPECT_TRUE(fs::is_symlink(folder.GetPath() / "fresh.qeli"));
    EXPECT_EQ(FileNames("store"), (Names{"new.qeli", "real.qeli"}));
    EXPECT_EQ(folder.ReadFile("store/real.qeli"), folder.ReadFile("store/new.qeli"));
}

TEST_F(QeliConvert, AFullDeviceIsAFailure) {
    folder.WriteFile("in.qeli", OneJointDocument());
    ExpectFailure("in.qeli", "/dev/full",
                  "/dev/full: error: The file cannot be written: No space left on device");
    const ProgramResult run = Run("in.qeli", "-", ">/dev/full");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "standard output: error: The file cannot be written: No space left on device\n");
}

TEST_F(QeliConvert, AWriteThatEndsHalfWayLeavesTheOldFileAlone) {
    std::string joints;
    for (int i = 0; i < 5000; ++i) joints += "<joint name=\"j" + std::to_string(i) + "\"/>";
    folder.WriteFile("in.qeli", Document("<scene>" + joints + "</scene>"));
    folder.WriteFile("out.qeli", "old");
    const std::string command = "cd '" + folder.GetPath().string() +
                                "' && trap '' XFSZ && ulimit -f 16 && '" RIGBAKE_PROGRAMS
                                "/qeli' convert in.qeli out.qeli 2>errors";
    EXPECT_NE(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.ReadFile("errors"),
              "out.qeli: error: The file cannot be written: File too large\n");
    EXPECT_EQ(folder.ReadFile("out.qeli"), "old");
    EXPECT_EQ(FileNames(), (Names{"errors", "in.qeli", "out.qeli"}));
}

}  // namespace
