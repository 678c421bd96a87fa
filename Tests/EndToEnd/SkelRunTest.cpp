#include "EndToEnd/ProgramRun.h"

#include <gtest/gtest.h>

#include <bit>
#include <fstream>
#include <iterator>

namespace {

constexpr const char* kSeeHelp = "Run skel --help for more information.\n";

std::string ReadCheckedIn(const std::string& path) {
    std::ifstream in(RIGBAKE_SOURCE_ROOT "/" + path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class SkelRun : public testing::Test {
  protected:
    SkelRun() {
        for (const char* scene : {"skeleton-parts.qeli", "skeleton-roots.qeli"})
            folder.WriteFile(scene, ReadCheckedIn(std::string("Tests/Documents/") + scene));
        for (const char* file : {"parts-little", "parts-big", "roots", "biped"})
            folder.WriteFile(file, ReadCheckedIn(std::string("Fuzz/Seeds/Skeleton/") + file));
    }

    ProgramResult Run(const std::vector<std::string>& arguments) const {
        return folder.Run("skel", arguments);
    }
    void ExpectOutput(const std::vector<std::string>& arguments, const std::string& output) const {
        const ProgramResult run = Run(arguments);
        EXPECT_EQ(run.output, output);
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.status, 0);
    }
    void ExpectFailure(const std::vector<std::string>& arguments, int status,
                       const std::string& errors) const {
        const ProgramResult run = Run(arguments);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, errors);
        EXPECT_EQ(run.status, status);
    }
    /// The little-endian file with a 16-bit number set.
    void WriteDamaged(const std::string& name, std::size_t place, std::uint16_t number) const {
        std::string bytes = folder.ReadFile("parts-little");
        bytes[place] = static_cast<char>(number & 0xFF);
        bytes[place + 1] = static_cast<char>(number >> 8);
        folder.WriteFile(name, bytes);
    }

    RunFolder folder;
};

}  // namespace

TEST_F(SkelRun, TheExampleFilesAreWhatTheirScenesBakeTo) {
    const auto bake = [this](const std::string& scene, std::vector<std::string> flags) {
        flags.insert(flags.begin(), {"-in", scene, "-out", "out"});
        EXPECT_EQ(folder.Rigbake(flags).status, 0);
    };
    bake("skeleton-parts.qeli", {"-ojc", "true", "-bothendian"});
    EXPECT_EQ(folder.ReadFile("outLE"), folder.ReadFile("parts-little"));
    EXPECT_EQ(folder.ReadFile("outBE"), folder.ReadFile("parts-big"));
    bake("skeleton-roots.qeli", {"-multiRoot"});
    EXPECT_EQ(folder.ReadFile("out"), folder.ReadFile("roots"));
    bake(RIGBAKE_SOURCE_ROOT "/Examples/biped-procedural.qeli", {"-ojc", "true"});
    EXPECT_EQ(folder.ReadFile("out"), folder.ReadFile("biped"));
}

TEST_F(SkelRun, HelpNamesTheCommandsAndSucceeds) {
    const ProgramResult run = Run({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    for (const char* command :
         {"\n  check ", "\n  dump ", "\n  diff ", "\n  header ", "\n  picture "})
        EXPECT_NE(run.output.find(command), std::string::npos) << command;
    EXPECT_NE(Run({"dump", "--help"}).output.find("  --names SCENE "), std::string::npos);
}

TEST_F(SkelRun, TheVersionIsTheLibrarys) {
    ExpectOutput({"--version"}, "skel 1.28.3\n");
}

TEST_F(SkelRun, WrongUsageGoesToStandardErrorWithStatus2) {
    const auto expectWrong = [this](const std::vector<std::string>& arguments,
                                    const std::string& words) {
        ExpectFailure(arguments, 2, "skel: " + words + "\n" + kSeeHelp);
    };
    expectWrong({}, "A subcommand is required");
    expectWrong({"dmup", "a"},
                "There is no command \"dmup\". The commands are check dump diff header picture.");
    expectWrong({"check"}, "FILE is required");
    expectWrong({"diff", "a"}, "B is required");
    expectWrong({"header", "a", "--prefix", "1x"}, "--prefix: \"1x\" is no identifier in C");
    expectWrong({"dump", "a", "--names"}, "--names: 1 required SCENE missing");
}

TEST_F(SkelRun, CheckTellsEachFilesFate) {
    ExpectOutput({"check", "parts-little", "parts-big", "roots", "biped"},
                 "parts-little: OK\nparts-big: OK\nroots: OK\nbiped: OK\n");
    WriteDamaged("damaged", 0x6A, 9);
    const ProgramResult run = Run({"check", "damaged", "roots"});
    EXPECT_EQ(run.output, "roots: OK\n");
    EXPECT_EQ(run.errors, "damaged: 0x006A: joints[7].parent is 9, not below 7\n");
    EXPECT_EQ(run.status, 1);
}

TEST_F(SkelRun, CheckNamesTheFirstFaultOfEachTable) {
    std::string bytes = folder.ReadFile("parts-big");
    bytes[0x6B] = 9;
    bytes[0x6D] = 9;
    bytes[0x90] = bytes[0x91] = '\xFF';
    folder.WriteFile("damaged", bytes);
    ExpectFailure({"check", "damaged"}, 1,
                  "damaged: 0x006A: joints[7].parent is 9, not below 7\n"
                  "damaged: 0x0090: transforms[0].rotation[0] is not a number\n");
}

TEST_F(SkelRun, CheckNamesTheFirstFaultOfEachTableOfAnItem) {
    std::string bytes = folder.ReadFile("parts-little");
    const auto damage = [&bytes](std::size_t place) {
        bytes.replace(place, 4, std::string{0, 0, '\xC0', '\x7F'});
    };
    damage(0x824);  // the kind of an external input
    damage(0x4D4);
    damage(0x5FC);
    damage(0x67C);
    damage(0x784);
    folder.WriteFile("damaged", bytes);
    ExpectFailure(
        {"check", "damaged"}, 1,
        "damaged: 0x0824: external_inputs[0].kind is 2143289344, above 0\n"
        "damaged: 0x04D4: items[1].rotation_axes[0][1] is not a number\n"
        "damaged: 0x05FC: items[1].outputs[1].curves[0].coefficients[0][3] is not a number\n"
        "damaged: 0x067C: items[2].orientations[0].weight is not a number\n"
        "damaged: 0x0784: items[2].parents[1].rotation[1] is not a number\n");
}

TEST_F(SkelRun, AFileLongerThanAnySkeletonIsRefusedUnread) {
    folder.WriteFile("long", folder.ReadFile("roots"));
    std::error_code error;
    std::filesystem::resize_file(folder.GetPath() / "long", 0x80000000u, error);
    if (error) GTEST_SKIP() << "there is no room for a file with a hole: " << error.message();
    ExpectFailure({"check", "long"}, 1,
                  "long: 0x7FFFFFFF: the file is longer than its offsets reach\n");
}

TEST_F(SkelRun, EveryCommandRefusesAFileThatIsNotSound) {
    WriteDamaged("damaged", 0x6A, 9);
    const std::string fault = "damaged: 0x006A: joints[7].parent is 9, not below 7\n";
    ExpectFailure({"dump", "damaged"}, 1, fault);
    ExpectFailure({"dump", "--json", "damaged"}, 1, fault);
    ExpectFailure({"diff", "roots", "damaged"}, 1, fault);
    ExpectFailure({"header", "damaged"}, 1, fault);
    ExpectFailure({"picture", "damaged", "out.svg"}, 1, fault);
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath() / "out.svg"));
}

TEST_F(SkelRun, FilesThatCannotBeReadAreNamed) {
    ExpectFailure({"check", "absent"}, 1,
                  "absent: error: The file cannot be read: No such file or directory\n");
    ExpectFailure({"dump", "."}, 1, ".: error: The file cannot be read: Is a directory\n");
    folder.WriteFile("empty", "");
    ExpectFailure({"check", "empty"}, 1, "empty: 0x0000: the file ends within its magic\n");
    ExpectFailure({"check", "skeleton-roots.qeli"}, 1,
                  "skeleton-roots.qeli: 0x0000: magic is 0x3C3F786D, not \"SK08\"\n");
}

TEST_F(SkelRun, AnEndlessFileIsRefusedByItsMagic) {
    if (!std::filesystem::exists("/dev/zero")) GTEST_SKIP() << "there is no endless file here";
    ExpectFailure({"check", "/dev/zero"}, 1,
                  "/dev/zero: 0x0000: magic is 0x00000000, not \"SK08\"\n");
}

TEST_F(SkelRun, AFileThatCannotBeWrittenOutIsAFailure) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no full disk here";
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"dump", "biped"},
                                                      {"dump", "--json", "biped"},
                                                      {"check", "biped"},
                                                      {"header", "biped"},
                                                      {"diff", "biped", "biped"},
                                                      {"--help"}}) {
        const ProgramResult run = folder.Run("skel", arguments, {}, ">/dev/full");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors,
                  "standard output: error: The file cannot be written: No space left on device\n");
    }
}

TEST_F(SkelRun, DumpShowsASkeletonForReading) {
    ExpectOutput({"dump", "roots", "--names", "skeleton-roots.qeli"},
                 R"(SK08, little-endian, 328 bytes
signature 0xF6408DFC

joints 4
  0 Left: hash 0x85981897, parent none, depth 0, level 0, scale compensate
    rotation (0, 0, 0, 1) translation (0, 0, 0) scale (1, 1, 1)
  1 #1: hash none, parent none, depth 0, level 0, scale compensate
    rotation (0, 0, 0, 1) translation (0, 0, 0) scale (1, 1, 1)
  2 End: hash 0xFF03CC4E, parent 1 #1, depth 1, level 1, scale compensate
    rotation (0, 0, 0, 1) translation (0, 0, 0) scale (1, 1, 1)
  3 Tip: hash 0xB77C47B3, parent 0 Left, depth 1, level 2, scale compensate
    rotation (0, 0, 0, 1) translation (0, 0, 0) scale (1, 1, 1)

levels of detail 2
  row 0: 1 members; dropped from here on, 2 joints are left
    2 End -> #1
    3 Tip -> Left
  row 1: 1 members; dropped from here on, 3 joints are left
    3 Tip -> Left
)");
}

TEST_F(SkelRun, DumpShowsDrivenKeysAndConstraints) {
    const std::string text = Run({"dump", "parts-big", "--names", "skeleton-parts.qeli"}).output;
    for (const char* line :
         {"SK08, big-endian, 2112 bytes\n",
          "\n  7 H\xC3\xBC"
          "ft: hash 0xF8380CBF, parent 1 Spine",
          "\n  item 1: driven keys, 2 outputs, 3 objects with rotations, the first 1 driven\n",
          "\n    Twist.rotateX from Hand.rotateX, 0 to 3\n      from 0 (1, 2, 3, 4)\n",
          "\n    Wet[2] from Rain, 0 to 1\n",
          "\n    aim of Eye\n      Hand: weight 1, aim (0, 0, 1",
          "up along (0, 1, 0, 0) of Spine\n",
          "\n    parent of Prop\n      Hand: weight 1, translation (0.1, 0, 0, 1)"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
    EXPECT_EQ(text.find(" 0x0x"), std::string::npos);
}

TEST_F(SkelRun, ChannelsOfMaterialsAreNamedInTheirLetterCase) {
    const auto driven = [](const char* material, const std::string& channel) {
        return std::string("<anim name=\"k\" target=\"|") + material +
               "\"><animChannel name=\"k\" channel=\"" + channel +
               "\" inputObject=\"||hips\" inputChannel=\"rotateX\"><animData "
               "interp=\"QELCurve\" numKeys=\"2\" keyStride=\"4\"><keyValues>0 1 0 0 0 0 0 0"
               "</keyValues><keyTimes>0 1</keyTimes></animData></animChannel></anim>";
    };
    folder.WriteFile("mixed.qeli",
                     Document("<scene><joint name=\"hips\"/></scene><material name=\"m\" url=\"\"/>"
                              "<material name=\"n\" url=\"\"/><material name=\"o\" url=\"\"/>"
                              "<blendshapeController name=\"face\"/>" +
                              driven("m", "MiXed") + driven("n", "mixed") + driven("o", "MIXED1") +
                              driven("n", "Mood3") + driven("m", "w1") + driven("o", "2") +
                              driven("face", "Smile3")));
    ASSERT_EQ(folder.Rigbake({"-in", "mixed.qeli", "-out", "mixed"}).status, 0);
    const std::string text = Run({"dump", "mixed", "--names", "mixed.qeli"}).output;
    for (const char* line :
         {"\n    MiXed[0] from hips.rotateX,", "\n    mixed[0] from hips.rotateX,",
          "\n    MIXED[1] from hips.rotateX,", "\n    Mood[3] from hips.rotateX,",
          "\n    2[0] from hips.rotateX,", "\n    w[1] from hips.rotateX,",
          "\n    Smile3 from hips.rotateX,"})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

TEST_F(SkelRun, ChannelsThatABlendWritesHaveNames) {
    folder.WriteFile(
        "blend.qeli",
        Document("<scene><joint name=\"hips\"/></scene><blendshapeController name=\"face\"/>"
                 "<blend name=\"sum\" target=\"|face\" channel=\"Smile\"/>"
                 "<anim name=\"k\" target=\"|sum\"><animChannel name=\"k\" channel=\"input0\" "
                 "inputObject=\"||hips\" inputChannel=\"rotateX\"><animData interp=\"QELCurve\" "
                 "numKeys=\"2\" keyStride=\"4\"><keyValues>0 1 0 0 0 0 0 0</keyValues><keyTimes>0 1"
                 "</keyTimes></animData></animChannel></anim>"));
    ASSERT_EQ(folder.Rigbake({"-in", "blend.qeli", "-out", "blend"}).status, 0);
    const std::string text = Run({"dump", "blend", "--names", "blend.qeli"}).output;
    EXPECT_NE(text.find("\n    Smile from hips.rotateX,"), std::string::npos) << text;
}

TEST_F(SkelRun, WithoutAFittingSceneHashesStandForNames) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"dump", "parts-little"},
          {"dump", "parts-little", "--names", "skeleton-roots.qeli"}}) {
        const std::string text = Run(arguments).output;
        EXPECT_NE(text.find("\n  0 0x811C56D0: hash 0x811C56D0, parent none"), std::string::npos);
        EXPECT_NE(text.find("\n    0xD71BB977.rotateX from 0xD89DBD70.rotateX, 0 to 3\n"),
                  std::string::npos);
    }
    ExpectFailure(
        {"dump", "parts-little", "--names", "absent.qeli"}, 1,
        "absent.qeli: error: File open error: \"absent.qeli\": No such file or directory\n");
}
