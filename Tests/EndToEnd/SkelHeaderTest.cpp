#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr const char* kScene = R"(<scene><joint name="ns:Hips"><joint name="arm-1"/>
    <joint name="arm_1"/><joint name="2nd"/></joint></scene>)";

constexpr const char* kHeader =
    R"(/* The joints of a skeleton, made by skel header. Indices and parents are those of the file; -1 is no parent. */
#ifndef HERO_SKELETON_CONSTANTS_H
#define HERO_SKELETON_CONSTANTS_H

#define HERO_SIGNATURE 0xSIGNATUREu
#define HERO_JOINT_COUNT 4

#define HERO_INDEX_HIPS 0
#define HERO_HASH_HIPS 0x811C56D0u
#define HERO_PARENT_HIPS (-1)

#define HERO_INDEX_ARM_1 1
#define HERO_HASH_ARM_1 0x50F69BD1u
#define HERO_PARENT_ARM_1 0

#define HERO_INDEX_ARM_1_2 2
#define HERO_HASH_ARM_1_2 0xBE9BF99Cu
#define HERO_PARENT_ARM_1_2 0

#define HERO_INDEX_2ND 3
#define HERO_HASH_2ND 0x7A7B0E9Au
#define HERO_PARENT_2ND 0

#elif HERO_SIGNATURE != 0xSIGNATUREu
#error "Two skeletons have the prefix HERO: give each its own, skel header --prefix"
#endif
)";

class SkelHeader : public testing::Test {
  protected:
    SkelHeader() {
        folder.WriteFile("hero.qeli", Document(kScene));
        EXPECT_EQ(folder.Rigbake({"-in", "hero.qeli", "-out", "hero.bin"}).status, 0);
    }
    ProgramResult Header(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "header");
        return folder.Run("skel", arguments);
    }
    void ExpectToCompile(const std::string& file) const {
        const std::string in = "cd '" + folder.GetPath().string() + "' && ";
        if (kIsWindows || std::system((in + "cc --version >compiler 2>&1").c_str()) != 0)
            GTEST_SKIP() << "there is no C compiler here";
        const std::string flags = " -Wall -Wextra -Werror -pedantic -c ";
        EXPECT_EQ(std::system((in + "cc -std=c11" + flags + file).c_str()), 0);
        EXPECT_EQ(std::system((in + "c++ -x c++" + flags + file).c_str()), 0);
    }

    RunFolder folder;
};

std::string WithoutHashes(std::string text) {
    for (std::size_t at = text.find(" 0x"); at != std::string::npos; at = text.find(" 0x", at + 1))
        text.replace(at, text.find('u', at) - at, " 0x");
    return text;
}

}  // namespace

TEST_F(SkelHeader, AJointWithoutARecordHasNoHashFromTheSceneEither) {
    folder.WriteFile("plain.qeli",
                     Document("<scene><joint name=\"a\"><joint name=\"\"/></joint></scene>"));
    ASSERT_EQ(folder.Rigbake({"-in", "plain.qeli", "-out", "plain.bin"}).status, 0);
    const ProgramResult run = Header({"plain.qeli"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output.find("0xFFFFFFFF"), std::string::npos);
    EXPECT_NE(run.output.find("INDEX_JOINT_1 1"), std::string::npos);
    EXPECT_EQ(run.output, Header({"plain.bin", "--names", "plain.qeli"}).output);
}

TEST_F(SkelHeader, AJointWhoseHashIs0HasANameInItsSceneAndNoHash) {
    folder.WriteFile("nought.qeli", Document("<scene><joint name=\"egtcgv3\"/></scene>"));
    const std::string text = Header({"nought.qeli"}).output;
    EXPECT_NE(text.find("SKELETON_INDEX_EGTCGV3 0\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("SKELETON_HASH_"), std::string::npos) << text;
}

TEST_F(SkelHeader, JointsThatAreCalledAlikeInCAreNumberedPastNamesThatAreTaken) {
    folder.WriteFile(
        "alike.qeli",
        Document("<scene><joint name=\"a.b\"><joint name=\"a_b_3\"/><joint name=\"a+b\"/>"
                 "<joint name=\"a-b\"/><joint name=\"a.b.3\"/><joint name=\"a=b\"/>"
                 "</joint></scene>"));
    const std::string text = Header({"alike.qeli"}).output;
    for (const char* line :
         {"A_B 0\n", "A_B_3 1\n", "A_B_2 2\n", "A_B_4 3\n", "A_B_3_2 4\n", "A_B_5 5\n"})
        EXPECT_NE(text.find(std::string("SKELETON_INDEX_") + line), std::string::npos) << text;
}

TEST_F(SkelHeader, FromASceneAndFromItsFileIsTheSame) {
    const ProgramResult fromScene = Header({"hero.qeli", "--prefix", "HERO"});
    EXPECT_EQ(fromScene.status, 0);
    EXPECT_EQ(fromScene.errors, "");
    EXPECT_EQ(WithoutHashes(fromScene.output), WithoutHashes(kHeader));
    EXPECT_NE(fromScene.output.find("HERO_HASH_HIPS 0x811C56D0u\n"), std::string::npos);
    const ProgramResult fromFile = Header({"hero.bin", "--names", "hero.qeli", "--prefix", "HERO"});
    EXPECT_EQ(fromFile.output, fromScene.output);
    EXPECT_EQ(fromFile.status, 0);
}

TEST_F(SkelHeader, JointsWithoutNamesAreCalledByTheirHashes) {
    const std::string text = Header({"hero.bin"}).output;
    EXPECT_NE(text.find("#define SKELETON_INDEX_JOINT_811C56D0 0\n"
                        "#define SKELETON_HASH_JOINT_811C56D0 0x811C56D0u\n"),
              std::string::npos)
        << text;
}

TEST_F(SkelHeader, AJointWithoutARecordHasNoHash) {
    const std::string text = Header({RIGBAKE_SOURCE_ROOT "/Fuzz/Seeds/Skeleton/roots"}).output;
    EXPECT_NE(text.find("#define SKELETON_INDEX_JOINT_1 1\n#define SKELETON_PARENT_JOINT_1 (-1)\n"),
              std::string::npos)
        << text;
}

TEST_F(SkelHeader, OfSeveralRootsTheFirstIsTakenUnlessAllAreWanted) {
    folder.WriteFile("two.qeli", Document(R"(<scene><joint name="a"/><joint name="b"/></scene>)"));
    EXPECT_NE(Header({"two.qeli"}).output.find("JOINT_COUNT 1\n"), std::string::npos);
    EXPECT_NE(Header({"two.qeli", "--multi-root"}).output.find("JOINT_COUNT 2\n"),
              std::string::npos);
}

TEST_F(SkelHeader, OptionsThatHaveNothingToSayAreRefused) {
    const auto expectWrong = [this](const std::vector<std::string>& arguments,
                                    const std::string& words) {
        const ProgramResult run = Header(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "skel: " + words + "\nRun skel --help for more information.\n");
    };
    expectWrong({"hero.bin", "--multi-root"},
                "--multi-root: hero.bin is a skeleton file: its roots are settled");
    expectWrong({"hero.qeli", "--names", "hero.qeli"},
                "--names: hero.qeli is a scene: it has its own names");
}

TEST_F(SkelHeader, AScenesFaultsAreToldAsWhenBaking) {
    folder.WriteFile("bad.qeli", Document(R"(<scene><joint name="a"><node name="n"><joint name="b"/>
        </node></joint></scene>)"));
    ProgramResult run = Header({"bad.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "bad.qeli: error: Joint parented to non-joint (object ||a|n|b)\n");
    folder.WriteFile("none.qeli", Document("<scene><node name=\"n\"/></scene>"));
    run = Header({"none.qeli"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "none.qeli: error: There are no joints in the hierarchy\n");
}

TEST_F(SkelHeader, APipeIsRefusedForItCannotBeReadTwice) {
    if (kIsWindows) GTEST_SKIP() << "pipes have no place among files";
    ASSERT_EQ(std::system(("mkfifo '" + folder.GetPath().string() + "/pipe'").c_str()), 0);
    const ProgramResult run = Header({"pipe"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "pipe: error: This is no regular file; it would have to be read twice, for a scene "
              "and a skeleton file are told apart by their contents\n");
}

TEST_F(SkelHeader, AnyNamesMakeConstantsThatCompile) {
    // Names of the language, of other constants, that become alike, that are no text or no ASCII.
    folder.WriteFile("odd.qeli", Document("<scene><joint name=\"int\"><joint name=\"class\"/>"
                                          "<joint name=\"signature\"/><joint name=\"joint_count\"/>"
                                          "<joint name=\"a.b\"/><joint name=\"a-b\"/>"
                                          "<joint name=\"a_b_2\"/><joint name=\"a b\"/>"
                                          "<joint name=\"H\xFC"
                                          "ft\"/><joint name=\"H\xF6"
                                          "ft\"/>"
                                          "<joint name=\"*/ #error\"/><joint name=\"12\"/>"
                                          "</joint></scene>"));
    folder.WriteFile("odd.h", Header({"odd.qeli", "--prefix", "for"}).output);
    const std::string text = folder.ReadFile("odd.h");
    for (const char* name : {"A_B 4\n", "A_B_2 5\n", "A_B_2_2 6\n", "A_B_3 7\n", "H__FT 8\n",
                             "H__FT_2 9\n", "____ERROR 10\n", "12 11\n"})
        EXPECT_NE(text.find(std::string("#define for_INDEX_") + name), std::string::npos) << name;
    folder.WriteFile("use.c",
                     "#include \"odd.h\"\n#include \"odd.h\"\n"
                     "unsigned odd[] = {for_INDEX_INT, for_HASH_CLASS, for_SIGNATURE,\n"
                     "    for_HASH_SIGNATURE, for_PARENT_12 + 0u, for_HASH_H__FT};\n");
    ExpectToCompile("use.c");
}

TEST_F(SkelHeader, AnotherSkeletonWithTheSamePrefixStopsTheCompiler) {
    folder.WriteFile("other.qeli", Document("<scene><joint name=\"hips\"/></scene>"));
    folder.WriteFile("hero.h", Header({"hero.qeli"}).output);
    folder.WriteFile("other.h", Header({"other.qeli"}).output);
    folder.WriteFile("named.h", Header({"other.qeli", "--prefix", "OTHER"}).output);
    folder.WriteFile("two.c", "#include \"hero.h\"\n#include \"other.h\"\n");
    folder.WriteFile("twice.c",
                     "#include \"hero.h\"\n#include \"named.h\"\n#include \"hero.h\"\n"
                     "int counts[] = {SKELETON_JOINT_COUNT, OTHER_JOINT_COUNT};\n");
    ExpectToCompile("twice.c");
    if (IsSkipped()) return;
    for (const char* compiler : {"cc -std=c11", "c++ -x c++"}) {
        EXPECT_NE(std::system(("cd '" + folder.GetPath().string() + "' && " + compiler +
                               " -c two.c 2>errors")
                                  .c_str()),
                  0);
        EXPECT_NE(folder.ReadFile("errors").find(
                      "Two skeletons have the prefix SKELETON: give each its own, skel header "
                      "--prefix"),
                  std::string::npos)
            << folder.ReadFile("errors");
    }
}

TEST_F(SkelHeader, CompilesAsCAndAsCpp) {
    folder.WriteFile("hero.h", Header({"hero.qeli", "--prefix", "HERO"}).output);
    folder.WriteFile("use.c",
                     "#include \"hero.h\"\n"
                     "int parents[HERO_JOINT_COUNT] = {HERO_PARENT_HIPS, HERO_PARENT_ARM_1};\n"
                     "unsigned hash = HERO_HASH_2ND + HERO_SIGNATURE;\n");
    ExpectToCompile("use.c");
}
