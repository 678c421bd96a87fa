#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <string>
#include <vector>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"
#include "VoktFramework/CommandLine/CommandLineTestTools.h"

using namespace CommandLineTest;

TEST(CommandLineDeclarations, AFlagNeedsAVerboseName) {
    VoktCommandLineSyntax syntax;
    EXPECT_EQ(Failure([&] { syntax.AddFlag("", "-f", ""); }), "No verbose flag name specified.");
}

TEST(CommandLineDeclarations, AHiddenFlagMustBeOptional) {
    VoktCommandLineSyntax syntax;
    EXPECT_EQ(Failure([&] { syntax.AddFlag("-flag", "", "", 1 | 8); }),
              "Hidden flags must be optional.");
}

TEST(CommandLineDeclarations, AValueNeedsAFlag) {
    VoktCommandLineSyntax syntax;
    EXPECT_EQ(Failure([&] { syntax.AddFlagArgument(Kind::String); }),
              "No flags to add argument to. Must call AddFlag before calling AddFlagArgument.");
}

TEST(CommandLineDeclarations, ASharedFlagMayBeDeclaredTwice) {
    for (const bool sharedFirst : {true, false}) {
        VoktCommandLineSyntax syntax;
        syntax.AddFlag("-flag", "-f", "first", sharedFirst ? 4u : 0u);
        syntax.AddFlagArgument(Kind::Boolean, "first", "", true, "0");
        syntax.AddFlag("-other", "", "");
        syntax.AddFlag("-flag", "-f", "second", sharedFirst ? 0u : 4u);
        syntax.AddFlagArgument(Kind::Boolean, "second", "name", true, "0");
        EXPECT_FALSE(syntax.CheckFlagDefinitions());
        // A third declaration needs no word of its own: the flag is shared by now.
        syntax.AddFlag("-flag", "-f", "third");
        syntax.AddFlagArgument(Kind::Boolean, "", "", true, "0");
        Parse(syntax, {"-flag", "1", "-other"});
        EXPECT_EQ(ValueOf(syntax, "-f"), "1");
        EXPECT_TRUE(syntax.IsSet("-other"));
    }
}

TEST(CommandLineDeclarations, AnUnsharedFlagIsDeclaredOnce) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-flag", "-f", "");
    EXPECT_EQ(Failure([&] { syntax.AddFlag("-flag", "-f", ""); }),
              "Flag name \"-flag\" or short name \"-f\" used twice with conflicting arguments.");
}

TEST(CommandLineDeclarations, SharedFlagsMustAgreeInNamesAndOptions) {
    const auto conflict = [](const char* name, const char* shortName, std::uint32_t options) {
        VoktCommandLineSyntax syntax;
        syntax.AddFlag("-flag", "-f", "", 4);
        return Failure([&] { syntax.AddFlag(name, shortName, "", options); });
    };
    EXPECT_EQ(conflict("-flag", "-g", 4),
              "Flag name \"-flag\" or short name \"-g\" used twice with conflicting arguments.");
    EXPECT_EQ(conflict("-other", "-f", 4),
              "Flag name \"-other\" or short name \"-f\" used twice with conflicting arguments.");
    EXPECT_EQ(conflict("-f", "", 4),
              "Flag name \"-f\" or short name \"\" used twice with conflicting arguments.");
    const std::string same =
        "Flag name \"-flag\" or short name \"-f\" used twice with conflicting arguments.";
    EXPECT_EQ(conflict("-flag", "-f", 4 | 1), same);
    EXPECT_EQ(conflict("-flag", "-f", 4 | 2), same);
    EXPECT_EQ(conflict("-flag", "-f", 4 | 8), same);
}

TEST(CommandLineDeclarations, SharedFlagsMustAgreeInTheirValues) {
    const auto conflict = [](Kind kind, bool required, const char* defaultValue) {
        VoktCommandLineSyntax syntax;
        syntax.AddFlag("-flag", "-f", "", 4);
        syntax.AddFlagArgument(Kind::String, "", "", true, "x");
        syntax.AddFlag("-flag", "-f", "", 4);
        return Failure([&] { syntax.AddFlagArgument(kind, "", "", required, defaultValue); });
    };
    const std::string text = "Two definitions of flag \"-flag\" supply conflicting arguments.";
    EXPECT_EQ(conflict(Kind::Boolean, true, "x"), text);
    EXPECT_EQ(conflict(Kind::String, false, "x"), text);
    EXPECT_EQ(conflict(Kind::String, true, "y"), text);
}

TEST(CommandLineDeclarations, SharedFlagsMustAgreeInTheNumberOfValues) {
    VoktCommandLineSyntax more;
    more.AddFlag("-flag", "", "", 4);
    more.AddFlag("-flag", "", "", 4);
    EXPECT_EQ(Failure([&] { more.AddFlagArgument(Kind::String); }),
              "Two definitions of flag \"-flag\" supply conflicting arguments.");

    VoktCommandLineSyntax fewer;
    fewer.AddFlag("-flag", "", "", 4);
    fewer.AddFlagArgument(Kind::String);
    fewer.AddFlag("-flag", "", "", 4);
    const std::string text =
        "Two definitions of flag \"-flag\" supplied different numbers of arguments.";
    EXPECT_EQ(Failure([&] { fewer.CheckFlagDefinitions(); }), text);
    EXPECT_EQ(ParseFailure(fewer, {}), text);
}

TEST(CommandLineReading, UnknownNamesAndIndicesAreTheCallersFault) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String);
    EXPECT_EQ(Failure([&] { ValueOf(syntax, ""); }), "Attempt to get flag with empty name.");
    EXPECT_EQ(Failure([&] { ValueOf(syntax, "-g"); }),
              "Failed to find flag \"-g\" in syntax. Please submit a bug report.");
    EXPECT_EQ(Failure([&] { ValueOf(syntax, "-f", 1); }),
              "Flag \"-f\" doesn't have an argument of index 1. Please submit a bug report.");
    EXPECT_EQ(Failure([&] { ValueOf(syntax, "-flag", -1); }),
              "Flag \"-flag\" doesn't have an argument of index -1. Please submit a bug report.");
    EXPECT_EQ(Failure([&] { ValueOf(syntax, "-f", 0, -2); }),
              "Flag usage index -2 is out of range. Please submit a bug report.");
    EXPECT_EQ(ValueOf(syntax, "-f", 0, INT_MAX), "");
    std::string out;
    EXPECT_EQ(Failure([&] { syntax.GetArgumentString(0, out); }),
              "Argument index 0 is out of range. Please submit a bug report.");
    EXPECT_EQ(Failure([&] { syntax.GetArgumentString(-1, out); }),
              "Argument index -1 is out of range. Please submit a bug report.");
}

TEST(CommandLineReading, UsageOfAnUnknownFlagIsNone) {
    const VoktCommandLineSyntax syntax = OneFlag(Kind::String);
    EXPECT_EQ(syntax.UsageCount("-g"), 0);
    EXPECT_FALSE(syntax.IsSet("-flag"));
    EXPECT_EQ(Failure([&] { syntax.UsageCount(""); }), "Check for empty flag name.");
}

TEST(CommandLineReading, OnlyFalseAndZeroAreFalse) {
    const auto reads = [](const std::string& value, bool expected) {
        const VoktCommandLineSyntax syntax = OneFlag(Kind::String, value);
        bool truth = !expected;
        syntax.GetBoolean("-f", 0, truth);
        EXPECT_EQ(truth, expected) << value;
    };
    for (const char* value : {"false", "FALSE", "False", "0"}) reads(value, false);
    for (const char* value : {"true", "tRuE", "1", "00", "-0", "7", "", " 0", "no"})
        reads(value, true);
}

class CommandLineFiles : public testing::Test {
  protected:
    TemporaryFolder folder;
    std::string input = folder.WriteFile("a", "text");
};

TEST_F(CommandLineFiles, AnInputMustBeReadable) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    const std::string missing = folder.Path("missing");
    EXPECT_EQ(ParseFailure(syntax, {"-in", missing, "-out", folder.Path("o")}),
              "Input file \"" + missing + "\" is not readable.");
    EXPECT_EQ(ParseFailure(syntax, {"-in", folder.Path(), "-out", folder.Path("o")}),
              "Input file \"" + folder.Path() + "\" is not readable.");
    EXPECT_EQ(ParseFailure(syntax, {"-in", "", "-out", folder.Path("o")}),
              "Input file \"\" is not readable.");
}

TEST_F(CommandLineFiles, AnOutputMustNotBeAnInput) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-out", input, "-in", input}),
              "Output file \"" + input + "\" matches an input file.");
    // Names compare as they were typed.
    Parse(syntax, {"-in", input, "-out", folder.Path("A")});
    Parse(syntax, {"-in", input, "-out", folder.Path("./a")});
    syntax.SetAllowOutputMatchingInput(true);
    Parse(syntax, {"-in", input, "-out", input});
}

TEST_F(CommandLineFiles, AnOutputThatCanOnlyBeReadIsRefused) {
    const std::string locked = folder.WriteFile("locked", "");
    using std::filesystem::perms;
    std::filesystem::permissions(locked,
                                 perms::owner_read | perms::group_read | perms::others_read);
    const OrdinaryUser user;
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-in", input, "-out", locked}),
              "Output file \"" + locked + "\" is not writable.");
    syntax.SetSkipFlagOutputChecks(true);
    Parse(syntax, {"-in", input, "-out", locked});
    // The switch is for flags alone.
    VoktCommandLineSyntax positional;
    positional.SetSkipFlagOutputChecks(true);
    positional.AddArgument(Kind::OutputFilename);
    EXPECT_EQ(ParseFailure(positional, {locked}),
              "Output file \"" + locked + "\" is not writable.");
}

TEST_F(CommandLineFiles, TheSwitchOverOutputsLeavesTheComparisonWithInputs) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    syntax.SetSkipFlagOutputChecks(true);
    EXPECT_EQ(ParseFailure(syntax, {"-in", input, "-out", input}),
              "Output file \"" + input + "\" matches an input file.");
}

TEST_F(CommandLineFiles, LookingAtAnOutputLeavesNoFile) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    Parse(syntax, {"-in", input, "-out", folder.Path("o")});
    EXPECT_FALSE(folder.Has("o"));
    folder.WriteFile("o", "kept");
    Parse(syntax, {"-in", input, "-out", folder.Path("o")});
    EXPECT_EQ(folder.ReadFile("o"), "kept");
}

TEST_F(CommandLineFiles, PositionalFilesAreCheckedTheSameWay) {
    VoktCommandLineSyntax syntax;
    syntax.AddArgument(Kind::InputFilename);
    syntax.AddArgument(Kind::OutputFilename);
    Parse(syntax, {input, folder.Path("o")});
    EXPECT_EQ(ParseFailure(syntax, {input, input}),
              "Output file \"" + input + "\" matches an input file.");
    const std::string missing = folder.Path("missing");
    EXPECT_EQ(ParseFailure(syntax, {missing, "o"}),
              "Input file \"" + missing + "\" is not readable.");
}

TEST_F(CommandLineFiles, EveryUsageOfAFlagIsChecked) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::InputFilename, "", 2);
    const std::string missing = folder.Path("missing");
    EXPECT_EQ(ParseFailure(syntax, {"-f", input, "-f", missing}),
              "Input file \"" + missing + "\" is not readable.");
}

TEST_F(CommandLineFiles, AFileThatWasLeftOutIsJudgedByItsDefault) {
    VoktCommandLineSyntax syntax;
    const std::string missing = folder.Path("missing");
    syntax.AddFlag("-flag", "-f", "");
    syntax.AddFlagArgument(Kind::InputFilename, "", "", false, missing);
    Parse(syntax, {});
    EXPECT_EQ(ParseFailure(syntax, {"-f"}), "Input file \"" + missing + "\" is not readable.");
    VoktCommandLineSyntax positional;
    positional.AddArgument(Kind::InputFilename, "", "", false, missing);
    EXPECT_EQ(ParseFailure(positional, {}), "Input file \"" + missing + "\" is not readable.");
}
