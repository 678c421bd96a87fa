#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

class OutputFiles : public testing::Test {
  protected:
    OutputFiles() { folder.WriteFile("scene.qeli", OneJointDocument()); }

    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& words) const {
        const std::string scene = folder.ReadFile("scene.qeli");
        const ProgramResult run = folder.Rigbake(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(WithoutBanner(run.output),
                  "Error: 102 An error occurred while validating arguments; " + words +
                      "\nError: Tool encountered errors\n");
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(folder.ReadFile("scene.qeli"), scene);
    }

    std::string Bake(const std::string& name) const {
        EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", name}).status, 0);
        return folder.ReadFile(name);
    }

    std::ptrdiff_t CountFiles() const {
        return std::distance(fs::directory_iterator(folder.GetPath()), fs::directory_iterator());
    }

    RunFolder folder;
};

TEST_F(OutputFiles, TheOldSkeletonKeepsItsModeAndItsLinkGoesOnLeadingThere) {
    const std::string skeleton = Bake("reference.bin");
    folder.WriteFile("real.bin", std::string(100000, 'x'));
    fs::create_symlink("real.bin", folder.GetPath() / "rig.bin");
    fs::permissions(folder.GetPath() / "real.bin", fs::perms(0640));
    EXPECT_EQ(Bake("rig.bin"), skeleton);
    EXPECT_TRUE(fs::is_symlink(folder.GetPath() / "rig.bin"));
    EXPECT_EQ(fs::status(folder.GetPath() / "real.bin").permissions(), fs::perms(0640));
}

TEST_F(OutputFiles, AFailedRunLeavesTheOldSkeletonAndNothingElse) {
    folder.WriteFile("broken.qeli", Document("<scene><joint name=\"a\"></scene>"));
    folder.WriteFile("rig.bin", "old");
    const std::ptrdiff_t before = CountFiles();
    EXPECT_EQ(folder.Rigbake({"-in", "broken.qeli", "-out", "rig.bin"}).status, 1);
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
    EXPECT_EQ(CountFiles(), before);
}

TEST_F(OutputFiles, ASkeletonThatDoesNotFitLeavesTheOldOne) {
    folder.WriteFile("rig.bin", "old");
    const std::string command = "cd '" + folder.GetPath().string() + "' && ulimit -f 0 && '" +
                                RIGBAKE_PROGRAMS +
                                "/rigbake' -in scene.qeli -out rig.bin >/dev/null; test $? -eq 1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
}

TEST_F(OutputFiles, TheInputMayBeTheOutputInAnotherSpelling) {
    const std::string skeleton = Bake("reference.bin");
    EXPECT_EQ(Bake("./scene.qeli"), skeleton);
}

TEST_F(OutputFiles, ALogThatIsTheInputIsRefused) {
    fs::create_hard_link(folder.GetPath() / "scene.qeli", folder.GetPath() / "hard");
    fs::create_symlink("scene.qeli", folder.GetPath() / "link");
    for (const std::string log : {"./scene.qeli", "hard", "link"})
        ExpectRefused({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", log},
                      "Output file \"" + log + "\" matches an input file.");
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST_F(OutputFiles, ALogThatIsTheSkeletonIsRefused) {
    const std::string words = "Output file \"rig.bin\" matches the log file.";
    for (const std::string log : {"rig.bin", "./rig.bin"})
        ExpectRefused({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", log}, words);
    folder.WriteFile("rig.bin", "old");
    fs::create_hard_link(folder.GetPath() / "rig.bin", folder.GetPath() / "hard");
    fs::create_symlink("rig.bin", folder.GetPath() / "link");
    for (const std::string log : {"rig.bin", "./rig.bin", "hard", "link"})
        ExpectRefused({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", log}, words);
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig", "-ble", "-logfile", "rigBE"},
                  "Output file \"rigBE\" matches the log file.");
}

TEST_F(OutputFiles, OfAPairNoFileIsTheInputOrTheOther) {
    folder.WriteFile("rigLE", OneJointDocument());
    ExpectRefused({"-in", "rigLE", "-out", "./rig", "-bothendian"},
                  "Output file \"./rigLE\" matches an input file.");
    fs::create_symlink("rigLE", folder.GetPath() / "rigBE");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig", "-bothendian"},
                  "Big- and little-endian suffixes are the same.");
}

TEST_F(OutputFiles, ADeviceTakesTheLogAndTheSkeleton) {
    EXPECT_EQ(folder
                  .Rigbake({"-in", "scene.qeli", "-out", "/dev/null", "-logfile", "/dev/null",
                            "-verboseSkeleton"})
                  .status,
              0);
}

TEST_F(OutputFiles, ALogThatIsNotWholeIsAWarning) {
    const std::string skeleton = Bake("reference.bin");
    const ProgramResult run = folder.Rigbake(
        {"-in", "scene.qeli", "-out", "rig.bin", "-logfile", "/dev/full", "-timetool", "1"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors,
              "\nWARNING: log file '/dev/full' is not whole: No space left on device\n");
    EXPECT_EQ(folder.ReadFile("rig.bin"), skeleton);
}

TEST_F(OutputFiles, ConversionDoesNotReplaceACircleOfLinks) {
    fs::create_symlink("loop", folder.GetPath() / "loop");
    const ProgramResult run = folder.Run("qeli", {"convert", "scene.qeli", "loop"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "loop: error: The file cannot be written: Too many levels of symbolic links\n");
    EXPECT_TRUE(fs::is_symlink(folder.GetPath() / "loop"));
}

TEST_F(OutputFiles, AMissingFolderForTemporaryFilesIsNotBlamedOnTheOutput) {
    const ProgramResult run =
        folder.Run("qeli", {"convert", "scene.qeli", "/dev/null"}, {{"TMPDIR", "/none"}});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "/none: error: A temporary file cannot be written here: No such file or directory\n");
}

TEST_F(OutputFiles, AFullStandardOutputTellsTheReason) {
    for (const std::string command : {"check", "tree"}) {
        const ProgramResult run = folder.Run("qeli", {command, "scene.qeli"}, {}, ">/dev/full");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors,
                  "standard output: error: The file cannot be written: No space left on device\n");
    }
}

}  // namespace
