#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"
#include "VoktFramework/CommandLine/CommandLineTestTools.h"

using namespace CommandLineTest;

TEST(CommandLineParse, AnUnknownFlagIsNamed) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-unknown"}), "Unknown flag \"-unknown\".");
    EXPECT_EQ(ParseFailure(syntax, {"-IN", "x"}), "Unknown flag \"-IN\".");
}

TEST(CommandLineParse, AnEmptyWordIsNoFlag) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {""}), "Attempt to get flag with empty name.");
}

TEST(CommandLineParse, AMissingValueNamesTheFlagAsTyped) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-tt"}), "Missing argument on flag \"-tt\".");
    EXPECT_EQ(ParseFailure(syntax, {"-timetool"}), "Missing argument on flag \"-timetool\".");
}

TEST(CommandLineParse, ARepeatedFlagIsNamedInFull) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-tt", "1", "-tt", "1"}),
              "Single use flag \"-timetool\" given multiple times.");
    EXPECT_EQ(ParseFailure(syntax, {"-out", "a.bin", "-out", "b.bin"}),
              "Single use flag \"-out\" given multiple times.");
}

TEST(CommandLineParse, AFlagIsNeverAValue) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-in", "-out", "x"}),
              "Missing argument on flag \"-in\". (Or argument has same name as a flag).");
    EXPECT_EQ(ParseFailure(syntax, {"-i", "-ls"}),
              "Missing argument on flag \"-i\". (Or argument has same name as a flag).");
}

TEST(CommandLineParse, AFlagIsAValueWhenNamesAreNotReserved) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String);
    syntax.SetReservedFlagNames(false);
    Parse(syntax, {"-flag", "-f"});
    EXPECT_EQ(ValueOf(syntax, "-flag"), "-f");
}

TEST(CommandLineParse, TheEmptyWordIsAValue) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String, "default");
    Parse(syntax, {"-flag", ""});
    EXPECT_TRUE(syntax.IsSet("-flag"));
    EXPECT_EQ(ValueOf(syntax, "-flag"), "");
}

TEST(CommandLineParse, ARequiredFlagMustBeGiven) {
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-timetool", "1"}), "A required flag \"-in\" was not set.");
    // The whole line is read first.
    EXPECT_EQ(ParseFailure(syntax, {"-bad"}), "Unknown flag \"-bad\".");
}

TEST(CommandLineParse, AnotherLineForgetsTheOneBefore) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String, "default");
    syntax.AddArgument(Kind::String, "", "", false, "none");
    Parse(syntax, {"-flag", "x", "y"});
    Parse(syntax, {});
    std::string positional;
    syntax.GetArgumentString(0, positional);
    EXPECT_EQ(positional, "none");
    EXPECT_FALSE(syntax.IsSet("-flag"));
    EXPECT_EQ(ValueOf(syntax, "-flag"), "default");
}

TEST(CommandLineParse, WordsAheadOfTheFirstIndexAreNotRead) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String);
    const char* argv[] = {"program", "ignored", "-flag", "x"};
    syntax.Parse(4, argv, 2);
    EXPECT_EQ(ValueOf(syntax, "-flag"), "x");
}

TEST(CommandLineParse, AMultiUseFlagKeepsEveryUsage) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String, "default", 2);
    Parse(syntax, {"-flag", "a", "-f", "b", "-flag", "c"});
    EXPECT_EQ(syntax.UsageCount("-f"), 3);
    EXPECT_EQ(ValueOf(syntax, "-flag", 0, 0), "a");
    EXPECT_EQ(ValueOf(syntax, "-flag", 0, 1), "b");
    EXPECT_EQ(ValueOf(syntax, "-flag", 0, 2), "c");
    EXPECT_EQ(ValueOf(syntax, "-flag", 0, 3), "default");
}

TEST(CommandLineParse, AnOptionalValueEndsAtAFlagOrAtTheEnd) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-flag", "-f", "");
    syntax.AddFlagArgument(Kind::String, "", "", true, "d0");
    syntax.AddFlagArgument(Kind::String, "", "", false, "d1");
    syntax.AddFlag("-other", "", "");
    Parse(syntax, {"-flag", "a", "-other"});
    EXPECT_EQ(ValueOf(syntax, "-flag", 0), "a");
    EXPECT_EQ(ValueOf(syntax, "-flag", 1), "d1");
    EXPECT_TRUE(syntax.IsSet("-other"));
    Parse(syntax, {"-other", "-flag", "a"});
    EXPECT_EQ(ValueOf(syntax, "-flag", 1), "d1");
    Parse(syntax, {"-flag", "a", "b", "-other"});
    EXPECT_EQ(ValueOf(syntax, "-flag", 1), "b");
}

TEST(CommandLineParse, OptionalValuesNeedReservedNames) {
    VoktCommandLineSyntax syntax;
    syntax.SetReservedFlagNames(false);
    syntax.AddFlag("-flag", "-f", "");
    syntax.AddFlagArgument(Kind::String, "", "", false);
    EXPECT_EQ(ParseFailure(syntax, {"-f", "x"}),
              "An argument of \"-f\" is optional but flag names are not reserved. This makes it "
              "impossible to tell if an optional flag argument has been specified.");
}

TEST(CommandLineParse, AValueBehindOneThatAnEarlierUsageLeftOutHasNoSlot) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-flag", "", "", 2);
    syntax.AddFlagArgument(Kind::String, "", "", false);
    syntax.AddFlagArgument(Kind::String, "", "", false);
    EXPECT_EQ(ParseFailure(syntax, {"-flag", "-flag", "a", "b"}),
              "Flag usage index 1 is out of range. Please submit a bug report.");
}

TEST(CommandLineParse, AnAttachedValueIsTheRestOfTheWord) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-include", "-I", "", 2);
    syntax.AddFlagArgument(Kind::String);
    syntax.SetAttachedValue(true);
    Parse(syntax, {"-Ione", "-includetwo", "-I", "three"});
    EXPECT_EQ(ValueOf(syntax, "-I", 0, 0), "one");
    EXPECT_EQ(ValueOf(syntax, "-I", 0, 1), "two");
    EXPECT_EQ(ValueOf(syntax, "-I", 0, 2), "three");
    // Reading knows whole names only.
    EXPECT_EQ(syntax.UsageCount("-Ione"), 0);
    // A value that begins like the flag is taken for the flag.
    EXPECT_EQ(ParseFailure(syntax, {"-I", "-Ix"}),
              "Missing argument on flag \"-I\". (Or argument has same name as a flag).");
    // So does a declaration.
    EXPECT_EQ(Failure([&] { syntax.AddFlag("-Iother", "", ""); }),
              "Flag name \"-Iother\" or short name \"\" used twice with conflicting arguments.");
}

TEST(CommandLineParse, PositionalArgumentsAreTakenInOrder) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String);
    syntax.AddArgument(Kind::String, "", "source");
    syntax.AddArgument(Kind::Integer, "", "", false, "5");
    Parse(syntax, {"a", "-flag", "x", "7"});
    std::string value;
    syntax.GetArgumentString(0, value);
    EXPECT_EQ(value, "a");
    syntax.GetArgumentString(1, value);
    EXPECT_EQ(value, "7");

    Parse(syntax, {"a"});
    syntax.GetArgumentString(1, value);
    EXPECT_EQ(value, "5");
    EXPECT_EQ(ParseFailure(syntax, {"a", "7", "b"}), "Unexpected command line argument \"b\".");
    EXPECT_EQ(ParseFailure(syntax, {"a", "b"}), "\"b\" is not an integer.");
    EXPECT_EQ(ParseFailure(syntax, {}),
              "A required command line argument <source> was not provided.");
}

TEST(CommandLineParse, APositionalArgumentWithoutANameIsShownByItsKind) {
    VoktCommandLineSyntax syntax;
    syntax.AddArgument(Kind::UnsignedInt);
    EXPECT_EQ(ParseFailure(syntax, {}),
              "A required command line argument <unsigned int> was not provided.");
}
