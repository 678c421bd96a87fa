#include "EndToEnd/OutputFilesRun.h"
#include "Support/ThisSystem.h"

namespace {

namespace fs = std::filesystem;

TEST_F(OutputFiles, AFailedRunLeavesTheOldSkeletonAndNothingElse) {
    folder.WriteFile("broken.qeli", Document("<scene><joint name=\"a\"></scene>"));
    folder.WriteFile("rig.bin", "old");
    const std::ptrdiff_t before = CountFiles();
    EXPECT_EQ(folder.Rigbake({"-in", "broken.qeli", "-out", "rig.bin"}).status, 1);
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
    EXPECT_EQ(CountFiles(), before);
}

TEST_F(OutputFiles, TheInputMayBeTheOutputInAnotherSpelling) {
    const std::string skeleton = Bake("reference.bin");
    EXPECT_EQ(Bake("./scene.qeli"), skeleton);
}

TEST_F(OutputFiles, ALogThatIsTheInputIsRefused) {
    fs::create_hard_link(folder.GetPath() / "scene.qeli", folder.GetPath() / "hard");
    for (const std::string log : {"./scene.qeli", "hard"})
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
    for (const std::string log : {"rig.bin", "./rig.bin", "hard"})
        ExpectRefused({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", log}, words);
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig", "-ble", "-logfile", "rigBE"},
                  "Output file \"rigBE\" matches the log file.");
}

TEST_F(OutputFiles, OfAPairNoFileIsTheInputOrTheOther) {
    folder.WriteFile("rigLE", OneJointDocument());
    ExpectRefused({"-in", "rigLE", "-out", "./rig", "-bothendian"},
                  "Output file \"./rigLE\" matches an input file.");
    fs::create_hard_link(folder.GetPath() / "rigLE", folder.GetPath() / "rigBE");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig", "-bothendian"},
                  "Big- and little-endian suffixes are the same.");
}

TEST_F(OutputFiles, ADeviceTakesTheLog) {
    EXPECT_EQ(folder
                  .Rigbake({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", kNullDevice,
                            "-verboseSkeleton"})
                  .status,
              0);
}

TEST_F(OutputFiles, AMissingFolderForTemporaryFilesIsNotBlamedOnTheOutput) {
    const std::string none = folder.Path("none");
    const ProgramResult run = folder.Run("qeli", {"convert", "scene.qeli", kNullDevice},
                                         {{kIsWindows ? "TMP" : "TMPDIR", none}});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              (kIsWindows ? WithSeparators(none + "/") : none) +
                  ": error: A temporary file cannot be written here: No such file or directory\n");
}

}  // namespace
