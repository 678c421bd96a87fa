#include "CommandLine/CommandLineValue.h"

#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"
#include "Support/ThrownText.h"
#include "VoktFramework/CommandLine/CommandLineTestTools.h"

using namespace CommandLineTest;

namespace {

bool Accepts(Kind kind, const std::string& value) {
    VoktCommandLineSyntax syntax = OneFlag(kind);
    try {
        Parse(syntax, {"-flag", value});
    } catch (const VoktCommandLineSyntax::Exception&) {
        return false;
    }
    return true;
}

}  // namespace

TEST(CommandLineValues, Booleans) {
    for (const char* value : {"true", "TRUE", "False", "0", "1", "7", "12abc", " 3", "-1", "0x1F"})
        EXPECT_TRUE(Accepts(Kind::Boolean, value)) << value;
    VoktCommandLineSyntax syntax = ToolSyntax();
    EXPECT_EQ(ParseFailure(syntax, {"-tt", "maybe"}),
              "\"maybe\" is not a boolean, i.e. \"true\", \"false\", \"0\" or \"1\".");
    for (const char* value : {"", "yes", "truee", " true", "-", "+", "x1"})
        EXPECT_FALSE(Accepts(Kind::Boolean, value)) << value;
}

TEST(CommandLineValues, Integers) {
    for (const char* value :
         {"0", "-5", "+5", "12abc", "\t\n\v\f\r 9", "0x", "0X1F", "0xFF", "99999999999999999999"})
        EXPECT_TRUE(Accepts(Kind::Integer, value)) << value;
    for (const char* value : {"", " ", "abc", "- 5", "--5", "x1F", ".5"})
        EXPECT_FALSE(Accepts(Kind::Integer, value)) << value;
    VoktCommandLineSyntax syntax = OneFlag(Kind::Integer);
    EXPECT_EQ(ParseFailure(syntax, {"-f", "abc"}), "\"abc\" is not an integer.");
}

TEST(CommandLineValues, UnsignedIntegers) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::UnsignedInt);
    EXPECT_TRUE(Accepts(Kind::UnsignedInt, "12abc"));
    EXPECT_TRUE(Accepts(Kind::UnsignedInt, "0xFF"));
    EXPECT_EQ(ParseFailure(syntax, {"-f", "abc"}), "\"abc\" is not a non-negative integer.");
    EXPECT_EQ(ParseFailure(syntax, {"-f", ""}), "\"\" is not a non-negative integer.");
    EXPECT_EQ(ParseFailure(syntax, {"-f", "-5"}),
              "\"-5\" is negative, expected a non-negative value.");
}

TEST(CommandLineValues, Floats) {
    for (const char* value : {"1", "-1.5e3x", ".5", "5.", " 2", "inf", "nan", "0x1p3"})
        EXPECT_TRUE(Accepts(Kind::Float, value)) << value;
    for (const char* value : {"", ".", "e5", "x", "-"})
        EXPECT_FALSE(Accepts(Kind::Float, value)) << value;
    VoktCommandLineSyntax syntax = OneFlag(Kind::Float);
    EXPECT_EQ(ParseFailure(syntax, {"-f", "x"}), "\"x\" is not a floating point value.");
}

TEST(CommandLineValues, TextsAreTakenAsTheyStand) {
    VoktCommandLineSyntax syntax = OneFlag(Kind::String);
    Parse(syntax, {"-f", " \xE4\xFF\t\"x\" "});
    EXPECT_EQ(ValueOf(syntax, "-f"), " \xE4\xFF\t\"x\" ");
}

TEST(CommandLineValues, AUsageBelowZeroIsNoneAndOneThatWasNotGivenIsTheDefault) {
    VoktCommandLineArgument argument;
    argument.defaultValue = "default";
    EXPECT_EQ(CommandLineValue::Read(argument, 0), "default");
    EXPECT_EQ(
        ThrownText<VoktCommandLineSyntax::Exception>([&] { CommandLineValue::Read(argument, -1); }),
        "Flag usage index -1 is out of range. Please submit a bug report.");
}
