#include "EndToEnd/ProgramRun.h"
#include "Support/ThisSystem.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

struct Refusal {
    Words words;
    std::string text;
};

const std::string kParsing = "Error: 101 An error occurred while parsing the command line; ";
const std::string kValidating = "Error: 102 An error occurred while validating arguments; ";

/// Runs in a folder that holds "scene.qeli" alone.
class CommandLineTexts : public testing::Test {
  protected:
    CommandLineTexts() { folder.WriteFile("scene.qeli", OneJointDocument()); }

    std::string Report(const Words& words) const {
        const ProgramResult run = folder.Rigbake(words);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.errors, "");
        return WithoutBanner(run.output);
    }
    void ExpectRefusals(const std::string& start, const std::vector<Refusal>& refusals) const {
        for (const Refusal& refusal : refusals)
            EXPECT_EQ(Report(refusal.words),
                      start + refusal.text + "\nError: Tool encountered errors\n")
                << testing::PrintToString(refusal.words);
        EXPECT_FALSE(folder.Has("o"));
    }
    static Words Baking(const Words& more) {
        Words words = {"-in", "scene.qeli", "-out", "o"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    RunFolder folder;
};

TEST_F(CommandLineTexts, WordsThatAreNoFlags) {
    ExpectRefusals(kParsing, {
                                 {{""}, "Attempt to get flag with empty name."},
                                 {Baking({""}), "Attempt to get flag with empty name."},
                                 {{"scene.qeli"}, "Unknown flag \"scene.qeli\"."},
                                 {{"--in", "scene.qeli"}, "Unknown flag \"--in\"."},
                                 {{"-IN", "scene.qeli"}, "Unknown flag \"-IN\"."},
                                 {{"-in=scene.qeli"}, "Unknown flag \"-in=scene.qeli\"."},
                                 {{"-help"}, "Unknown flag \"-help\"."},
                                 {Baking({"-vs", "true"}), "Unknown flag \"true\"."},
                                 {Baking({"-dd"}), "Unknown flag \"-dd\"."},
                                 {Baking({"a b\xC3\xA4"}), "Unknown flag \"a b\xC3\xA4\"."},
                             });
}

TEST_F(CommandLineTexts, ValuesThatAreMissing) {
    const std::string orFlag = " (Or argument has same name as a flag).";
    ExpectRefusals(kParsing,
                   {
                       {{"-in"}, "Missing argument on flag \"-in\"."},
                       {{"-i"}, "Missing argument on flag \"-i\"."},
                       {{"-tt"}, "Missing argument on flag \"-tt\"."},
                       {Baking({"-odk"}), "Missing argument on flag \"-odk\"."},
                       {Baking({"-ojc"}), "Missing argument on flag \"-ojc\"."},
                       {Baking({"-bigsuffix"}), "Missing argument on flag \"-bigsuffix\"."},
                       {{"-in", "-out", "x"}, "Missing argument on flag \"-in\"." + orFlag},
                       {{"-i", "-debugDependencies"}, "Missing argument on flag \"-i\"." + orFlag},
                       {{"-log", "-log", "x"}, "Missing argument on flag \"-log\"." + orFlag},
                       {Baking({"-ls", "-bs", "x"}), "Missing argument on flag \"-ls\"." + orFlag},
                   });
}

TEST_F(CommandLineTexts, FlagsThatAreGivenTwice) {
    const auto twice = [](const std::string& flag) {
        return "Single use flag \"" + flag + "\" given multiple times.";
    };
    ExpectRefusals(kParsing, {
                                 {Baking({"-out", "p"}), twice("-out")},
                                 {Baking({"-i", "scene.qeli"}), twice("-in")},
                                 {Baking({"-tt", "1", "-tt", "1"}), twice("-timetool")},
                                 {Baking({"-vl", "-verboseload"}), twice("-verboseload")},
                                 {Baking({"-o"}), twice("-out")},
                             });
}

TEST_F(CommandLineTexts, ValuesThatAreNoBooleans) {
    std::vector<Refusal> refusals;
    for (const std::string flag : {"-tt", "-au", "-cuaa", "-odk", "-ojc", "-fw"})
        for (const std::string value : {"maybe", "", "-", "yes", " x", "true "})
            refusals.push_back(
                {Baking({flag, value}),
                 "\"" + value + R"(" is not a boolean, i.e. "true", "false", "0" or "1".)"});
    ExpectRefusals(kParsing, refusals);
}

TEST_F(CommandLineTexts, TheFirstFaultOfTheLineIsTold) {
    ExpectRefusals(kParsing, {
                                 // Every word is read before what is not there is missed.
                                 {{"-vs", "-unknown"}, "Unknown flag \"-unknown\"."},
                                 {{"-vs"}, "A required flag \"-in\" was not set."},
                                 {{"-out", "o"}, "A required flag \"-in\" was not set."},
                                 {{"-in", "missing"}, "A required flag \"-out\" was not set."},
                                 // Inputs are looked at ahead of outputs.
                                 {{"-out", "missing", "-log", "missing", "-in", "missing"},
                                  "Input file \"missing\" is not readable."},
                                 {{"-in", "", "-out", ""}, "Input file \"\" is not readable."},
                                 {{"-in", ".", "-out", "o"}, "Input file \".\" is not readable."},
                                 {{"-in", "scene.qeli", "-out", "scene.qeli"},
                                  "Output file \"scene.qeli\" matches an input file."},
                                 {Baking({"-log", "scene.qeli"}),
                                  "Output file \"scene.qeli\" matches an input file."},
                             });
}

TEST_F(CommandLineTexts, WhatValidationRefuses) {
    ExpectRefusals(
        kValidating,
        {
            // The line end of a collected fault is told as a blank.
            {{"-in", "scene.qeli", "-out", ""}, "No output filename provided. "},
            {Baking({"-ble", "-ls", "x", "-bs", "x"}),
             "Big- and little-endian suffixes are the same. "},
            {Baking({"-ble", "-ls", "", "-bs", ""}),
             "Big- and little-endian suffixes are the same. "},
            {Baking({"-cua", "Y"}), "Unrecognised up axis form 'Y' "},
            // The stages are asked in their order.
            {{"-in", "scene.qeli", "-out", "", "-cua", "x"}, "Unrecognised up axis form 'x' "},
            {{"-in", "scene.qeli", "-out", "Scene.QELI"},
             "ERROR: Input and output filenames are identical."},
            {{"-in", "scene.qeli", "-out", "SCENE.qeli", "-ble", "-ls", "", "-bs", ""},
             "Big- and little-endian suffixes are the same. "},
        });
}

TEST_F(CommandLineTexts, LooseValuesAreTaken) {
    for (const char* value : {"0", "false", "FALSE", "False"})
        EXPECT_EQ(WithoutBanner(folder.Rigbake(Baking({"-tt", value})).output), "") << value;
    for (const char* value : {"1", "tRuE", "7", "00", "-0", "+1", " 1", "0x", "12abc"})
        EXPECT_EQ(WithoutBanner(folder.Rigbake(Baking({"-tt", value})).output).substr(0, 14),
                  "Tool timings:\n")
            << value;
    for (const Words& words : {Words{"-log", ""}, {"-cua", ""}, {"-cua", "keep"}, {"-ls", "x"}}) {
        const ProgramResult run = folder.Rigbake(Baking(words));
        EXPECT_EQ(run.status, 0) << testing::PrintToString(words);
        EXPECT_EQ(WithoutBanner(run.output), "") << testing::PrintToString(words);
    }
}

TEST_F(CommandLineTexts, AWordThatLooksLikeAFlagButIsNoneIsAValue) {
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "-weird"}).status, 0);
    EXPECT_TRUE(folder.Has("-weird"));
    EXPECT_EQ(
        folder.Rigbake({"-in", "scene.qeli", "-o", "w", "-ble", "-ls", "-LE", "-bs", ""}).status,
        0);
    EXPECT_TRUE(folder.Has("w-LE"));
    EXPECT_TRUE(folder.Has("w"));
}

TEST_F(CommandLineTexts, NamesAreBytes) {
    const std::string name =
        kIsWindows ? "it's a %s \xC3\xA4 \xE9\xAA\xA8.bin" : "it's \"a\" %s \xE4.bin";
    EXPECT_EQ(folder.Rigbake({"-in", "scene.qeli", "-out", "new folder/" + name}).status, 0);
    EXPECT_TRUE(folder.Has("new folder/" + name));
    EXPECT_EQ(Report({"-in", name, "-out", "o"}), kParsing + "Input file \"" + name +
                                                      "\" is not readable.\n"
                                                      "Error: Tool encountered errors\n");
}

}  // namespace
