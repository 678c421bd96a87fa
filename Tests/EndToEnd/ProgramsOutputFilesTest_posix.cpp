#include "EndToEnd/OutputFilesRun.h"

// Links, permissions of files, and devices and limits that let no more be written.

namespace {

namespace fs = std::filesystem;

TEST_F(OutputFiles, TheOldSkeletonKeepsItsModeAndItsLinkGoesOnLeadingThere) {
    const std::string skeleton = Bake("reference.bin");
    folder.WriteFile("real.bin", std::string(100000, 'x'));
    fs::create_symlink("real.bin", folder.GetPath() / "rig.bin");
    fs::permissions(folder.GetPath() / "real.bin", fs::perms(0640));
    EXPECT_EQ(Bake("rig.bin"), skeleton);
    EXPECT_TRUE(fs::is_symlink(folder.GetPath() / "rig.bin"));
    EXPECT_EQ(fs::status(folder.GetPath() / "real.bin").permissions(), fs::perms(0640));
}

TEST_F(OutputFiles, ASkeletonThatDoesNotFitLeavesTheOldOne) {
    folder.WriteFile("rig.bin", "old");
    const std::string command = "cd '" + folder.GetPath().string() + "' && ulimit -f 0 && '" +
                                RIGBAKE_PROGRAMS +
                                "/rigbake' -in scene.qeli -out rig.bin >/dev/null; test $? -eq 1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
}

TEST_F(OutputFiles, ALogThatIsALinkToTheInputOrTheSkeletonIsRefused) {
    folder.WriteFile("rig.bin", "old");
    fs::create_symlink("scene.qeli", folder.GetPath() / "to-scene");
    fs::create_symlink("rig.bin", folder.GetPath() / "to-rig");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", "to-scene"},
                  "Output file \"to-scene\" matches an input file.");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig.bin", "-logfile", "to-rig"},
                  "Output file \"rig.bin\" matches the log file.");
    EXPECT_EQ(folder.ReadFile("rig.bin"), "old");
}

TEST_F(OutputFiles, WithALogASkeletonThatGoesToStandardOutputIsRefused) {
    folder.WriteFile("log", "old");
    fs::create_symlink("/dev/stdout", folder.GetPath() / "printed");
    fs::create_symlink("printed", folder.GetPath() / "rigBE");
    for (const std::string out : {"/dev/stdout", "/dev/fd/1", "\\proc\\self\\fd\\1", "printed"})
        ExpectRefused({"-in", "scene.qeli", "-out", out, "-logfile", "log"},
                      "Output file \"" + out + "\" matches the log file.");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig", "-ble", "-logfile", "log"},
                  "Output file \"rigBE\" matches the log file.");
    for (const std::string out : {"/dev/stdout", "printed"}) {
        const ProgramResult run = folder.Run(
            "rigbake", {"-in", "scene.qeli", "-out", out, "-logfile", "log"}, {}, ">/dev/null");
        EXPECT_EQ(run.status, 1) << out;
    }
    EXPECT_EQ(folder.ReadFile("log"), "old");
    EXPECT_FALSE(folder.Has("rigLE"));
}

TEST_F(OutputFiles, ASkeletonTakesThePlaceOfTheFileThatStandardOutputGoesTo) {
    const std::string skeleton = Bake("reference.bin");
    EXPECT_EQ(folder
                  .Run("rigbake", {"-in", "scene.qeli", "-out", "rig.bin", "-logfile", "log"}, {},
                       ">rig.bin")
                  .status,
              0);
    EXPECT_EQ(folder.ReadFile("rig.bin"), skeleton);
    EXPECT_EQ(folder.ReadFile("log").find('\0'), std::string::npos);
}

TEST_F(OutputFiles, ASkeletonGoesToStandardOutputWithoutALogAndToTheNullDeviceWithOne) {
    const std::string skeleton = Bake("reference.bin");
    EXPECT_EQ(
        folder.Run("rigbake", {"-in", "scene.qeli", "-out", "/dev/stdout"}, {}, ">rig.bin").status,
        0);
    EXPECT_EQ(folder.ReadFile("rig.bin"), skeleton);
    const std::vector<std::string> arguments{"-in",      "scene.qeli", "-out",      "/dev/null",
                                             "-logfile", "log",        "-timetool", "1"};
    for (const std::string to : {"", ">/dev/null"})
        EXPECT_EQ(folder.Run("rigbake", arguments, {}, to).status, 0);
    EXPECT_EQ(folder.ReadFile("log").find('\0'), std::string::npos);
}

TEST_F(OutputFiles, OfAPairNoFileIsALinkToTheOther) {
    folder.WriteFile("rigLE", "old");
    fs::create_symlink("rigLE", folder.GetPath() / "rigBE");
    ExpectRefused({"-in", "scene.qeli", "-out", "rig", "-bothendian"},
                  "Big- and little-endian suffixes are the same.");
    EXPECT_EQ(folder.ReadFile("rigLE"), "old");
}

TEST_F(OutputFiles, ADeviceTakesTheSkeleton) {
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "/dev/null"}).status, 0);
}

TEST_F(OutputFiles, ALogThatIsPrintedIntoIsRefusedAndKeepsWhatItHolds) {
    folder.WriteFile("all", "earlier\n");
    for (const std::string log : {"all", "/dev/stdout", "/dev/stderr"}) {
        const ProgramResult run = folder.Run(
            "rigbake", {"-in", "scene.qeli", "-out", "rig.bin", "-logfile", log}, {}, ">>all 2>&1");
        EXPECT_EQ(run.status, 1) << log;
    }
    const std::string all = folder.ReadFile("all");
    EXPECT_EQ(all.rfind("earlier\nQEL SDK", 0), 0u);
    EXPECT_NE(all.find("could not open '/dev/stderr' for write"), std::string::npos);
    EXPECT_FALSE(folder.Has("rig.bin"));
}

TEST_F(OutputFiles, TheNamesOfStandardOutputKeepWhatWasPrintedBefore) {
    const auto printed = [&](const std::vector<std::string>& arguments) {
        folder.WriteFile("all", "earlier\n");
        EXPECT_EQ(folder.Run("qeli", arguments, {}, ">>all").status, 0);
        return folder.ReadFile("all");
    };
    const std::string converted = printed({"convert", "scene.qeli", "-"});
    EXPECT_EQ(converted.rfind("earlier\n<?xml", 0), 0u);
    EXPECT_EQ(printed({"convert", "scene.qeli", "/dev/stdout"}), converted);
    EXPECT_EQ(printed({"convert", "scene.qeli", "/proc/self/fd/1"}), converted);
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

TEST_F(OutputFiles, AFullStandardOutputTellsTheReason) {
    for (const std::string command : {"check", "tree"}) {
        const ProgramResult run = folder.Run("qeli", {command, "scene.qeli"}, {}, ">/dev/full");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors,
                  "standard output: error: The file cannot be written: No space left on device\n");
    }
}

}  // namespace
