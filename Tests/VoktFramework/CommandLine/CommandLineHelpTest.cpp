#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

namespace {

using Kind = VoktArgumentType;
constexpr std::uint32_t kRequired = VoktCommandLineSyntax::kRequired;
constexpr std::uint32_t kHidden = VoktCommandLineSyntax::kHidden;

// The help with a bar at the end of each line that shows the blanks, behind a line feed.
std::string Help(const VoktCommandLineSyntax& syntax, int width) {
    std::ostringstream out;
    syntax.PrintHelp(out, width);
    std::string marked = "\n";
    for (const char c : out.str()) marked += c == '\n' ? std::string("|\n") : std::string(1, c);
    return marked;
}

void AddToolFlags(VoktCommandLineSyntax& syntax) {
    syntax.AddFlag("-timetool", "-tt", "Prints out how long the tool took to run");
    syntax.AddFlagArgument(Kind::Boolean, "Whether to print timing info", "", true, "0");
    syntax.AddFlag("-logfile", "-log", "Captures stdout to named file");
    syntax.AddFlagArgument(Kind::OutputFilename);
    syntax.AddFlag("-in", "-i", "Input qeli file", kRequired);
    syntax.AddFlagArgument(Kind::InputFilename);
    syntax.AddFlag("-autoupdate", "-au",
                   "Whether to automatically update out-of-date qeli files on load", 4);
    syntax.AddFlagArgument(Kind::Boolean);
    syntax.AddFlag("-verboseload", "-vl", "Enable progress messages when loading qeli files.", 4);
    syntax.AddFlag("-quietload", "-ql", "Disable all messages when loading qeli files.", 4);
}

void AddConversionFlags(VoktCommandLineSyntax& syntax) {
    syntax.AddFlag("-multiRoot", "-mr", "Support skeletons with multiple roots");
    syntax.AddFlag("-changeUpAxis", "-cua", "Change up axis (keep/y/z)");
    syntax.AddFlagArgument(Kind::String);
    syntax.AddFlag("-changeUpAxisAnimation", "-cuaa", "Change up axis for animation");
    syntax.AddFlagArgument(Kind::Boolean);
    syntax.AddFlag("-verboseSkeleton", "-vs", "Verbose mode for skeleton export");
    syntax.AddFlag("-outputDrivenKeys", "-odk", "Output driven keys (default = true)");
    syntax.AddFlagArgument(Kind::Boolean, "", "", true, "true");
    syntax.AddFlag("-outputJointConstraints", "-ojc", "Output joint constraints (default = false)");
    syntax.AddFlagArgument(Kind::Boolean, "", "", true, "false");
    syntax.AddFlag("-debugDependencies", "", "Debug dependencies");
}

void AddSaveFlags(VoktCommandLineSyntax& syntax) {
    syntax.AddFlag("-out", "-o", "Output binary file", kRequired);
    syntax.AddFlagArgument(Kind::OutputFilename);
    syntax.AddFlag("-littleendian", "-le", "Write the binary in little-endian (PC) form (default)");
    syntax.AddFlag("-bigendian", "-be", "Write the binary in big-endian (QX9) form");
    syntax.AddFlag("-bothendian", "-ble", "Write the binary in both big- and little-endian forms");
    syntax.AddFlag("-littlesuffix", "-ls",
                   "Suffix to use for little-endian file when writing both endianesses");
    syntax.AddFlagArgument(Kind::String);
    syntax.AddFlag("-bigsuffix", "-bs",
                   "Suffix to use for big-endian file when writing both endianesses");
    syntax.AddFlagArgument(Kind::String);
    syntax.AddFlag("-forceWrite", "-fw",
                   "Attempt to make writable/check out read-only output files");
    syntax.AddFlagArgument(Kind::Boolean);
}

// All flags of the skeleton baker.
VoktCommandLineSyntax BakerSyntax() {
    VoktCommandLineSyntax syntax;
    AddToolFlags(syntax);
    AddConversionFlags(syntax);
    AddSaveFlags(syntax);
    return syntax;
}

}  // namespace

// The longest word of the first column is 23 wide, two more make its width.
TEST(CommandLineHelp, WithoutAConsoleTheLongestNameMakesTheColumn) {
    EXPECT_EQ(Help(BakerSyntax(), 79), R"(
Required flags:|
  -in (-i) <filename>        Input qeli file                                   |
  -out (-o) <filename>       Output binary file                                |
Optional flags:|
  -timetool (-tt) <boolean>  Prints out how long the tool took to run          |
  -logfile (-log)            Captures stdout to named file                     |
    <filename>                                                                 |
  -autoupdate (-au)          Whether to automatically update out-of-date qeli  |
    <boolean>                files on load                                     |
  -verboseload (-vl)         Enable progress messages when loading qeli files. |
  -quietload (-ql)           Disable all messages when loading qeli files.     |
  -multiRoot (-mr)           Support skeletons with multiple roots             |
  -changeUpAxis (-cua)       Change up axis (keep/y/z)                         |
    <string>                                                                   |
  -changeUpAxisAnimation     Change up axis for animation                      |
    (-cuaa) <boolean>                                                          |
  -verboseSkeleton (-vs)     Verbose mode for skeleton export                  |
  -outputDrivenKeys (-odk)   Output driven keys (default = true)               |
    <boolean>                                                                  |
  -outputJointConstraints    Output joint constraints (default = false)        |
    (-ojc) <boolean>                                                           |
  -debugDependencies         Debug dependencies                                |
  -littleendian (-le)        Write the binary in little-endian (PC) form       |
                             (default)                                         |
  -bigendian (-be)           Write the binary in big-endian (QX9) form         |
  -bothendian (-ble)         Write the binary in both big- and little-endian   |
                             forms                                             |
  -littlesuffix (-ls)        Suffix to use for little-endian file when writing |
    <string>                 both endianesses                                  |
  -bigsuffix (-bs) <string>  Suffix to use for big-endian file when writing    |
                             both endianesses                                  |
  -forceWrite (-fw)          Attempt to make writable/check out read-only      |
    <boolean>                output files                                      |
)");
}

// The longest cell of the first column, 40 wide, is within the limit of 45.
TEST(CommandLineHelp, InAWideConsoleEveryFlagStandsOnOneLine) {
    EXPECT_EQ(Help(BakerSyntax(), 119), R"(
Required flags:|
  -in (-i) <filename>                       Input qeli file                                                            |
  -out (-o) <filename>                      Output binary file                                                         |
Optional flags:|
  -timetool (-tt) <boolean>                 Prints out how long the tool took to run                                   |
  -logfile (-log) <filename>                Captures stdout to named file                                              |
  -autoupdate (-au) <boolean>               Whether to automatically update out-of-date qeli files on load             |
  -verboseload (-vl)                        Enable progress messages when loading qeli files.                          |
  -quietload (-ql)                          Disable all messages when loading qeli files.                              |
  -multiRoot (-mr)                          Support skeletons with multiple roots                                      |
  -changeUpAxis (-cua) <string>             Change up axis (keep/y/z)                                                  |
  -changeUpAxisAnimation (-cuaa) <boolean>  Change up axis for animation                                               |
  -verboseSkeleton (-vs)                    Verbose mode for skeleton export                                           |
  -outputDrivenKeys (-odk) <boolean>        Output driven keys (default = true)                                        |
  -outputJointConstraints (-ojc) <boolean>  Output joint constraints (default = false)                                 |
  -debugDependencies                        Debug dependencies                                                         |
  -littleendian (-le)                       Write the binary in little-endian (PC) form (default)                      |
  -bigendian (-be)                          Write the binary in big-endian (QX9) form                                  |
  -bothendian (-ble)                        Write the binary in both big- and little-endian forms                      |
  -littlesuffix (-ls) <string>              Suffix to use for little-endian file when writing both endianesses         |
  -bigsuffix (-bs) <string>                 Suffix to use for big-endian file when writing both endianesses            |
  -forceWrite (-fw) <boolean>               Attempt to make writable/check out read-only output files                  |
)");
}

// The first column ends at its limit of 15; a full line's blank moves what stands beside the next.
TEST(CommandLineHelp, InANarrowConsoleTheFirstColumnIsCapped) {
    EXPECT_EQ(Help(BakerSyntax(), 39), R"(
Required flags:|
  -in (-i) <filen  Input qeli file     |
    ame>                               |
  -out (-o) <file  Output binary file  |
    name>                              |
Optional flags:|
  -timetool (-tt)  Prints out how long |
    <boolean>     the tool took to run|
  -logfile (-log)  Captures stdout to  |
    <filename>    named file          |
  -autoupdate      Whether to automatic|
    (-au) <boolea  ally update out-of-d|
    n>             ate qeli files on   |
                   load                |
  -verboseload     Enable progress     |
    (-vl)          messages when       |
                   loading qeli files. |
  -quietload       Disable all messages|
    (-ql)          when loading qeli  |
                   files.              |
  -multiRoot       Support skeletons   |
    (-mr)          with multiple roots |
  -changeUpAxis    Change up axis (keep|
    (-cua) <strin  /y/z)               |
    g>                                 |
  -changeUpAxisAn  Change up axis for  |
    imation (-cua  animation           |
    a) <boolean>                       |
  -verboseSkeleto  Verbose mode for    |
    n (-vs)        skeleton export     |
  -outputDrivenKe  Output driven keys  |
    ys (-odk) <bo  (default = true)    |
    olean>                             |
  -outputJointCon  Output joint constra|
    straints       ints (default =     |
    (-ojc) <boole  false)              |
    an>                                |
  -debugDependenc  Debug dependencies  |
    ies                                |
  -littleendian    Write the binary in |
    (-le)          little-endian (PC)  |
                   form (default)      |
  -bigendian       Write the binary in |
    (-be)          big-endian (QX9)    |
                   form                |
  -bothendian      Write the binary in |
    (-ble)         both big- and little|
                   -endian forms       |
  -littlesuffix    Suffix to use for   |
    (-ls)          little-endian file  |
    <string>       when writing both   |
                   endianesses         |
  -bigsuffix       Suffix to use for   |
    (-bs)          big-endian file when|
    <string>       writing both endian|
                   esses               |
  -forceWrite      Attempt to make writ|
    (-fw) <boolea  able/check out read-|
    n>             only output files   |
)");
}

TEST(CommandLineHelp, GoesToStandardOutput) {
    std::ostringstream captured;
    std::streambuf* const before = std::cout.rdbuf(captured.rdbuf());
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-flag", "", "text");
    syntax.PrintHelp();
    std::cout.rdbuf(before);
    EXPECT_EQ(captured.str().substr(0, 20), "Optional flags:\n  -f");
}

TEST(CommandLineHelp, WithoutFlagsItIsEmpty) {
    EXPECT_EQ(Help(VoktCommandLineSyntax(), 79), "\n");
}

TEST(CommandLineHelp, ShortNamesLeaveTheFirstColumnAtTen) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-a", "", "text");
    EXPECT_EQ(Help(syntax, 30), R"(
Optional flags:|
  -a          text            |
)");
}

TEST(CommandLineHelp, AWordOfEightStillLeavesTheFirstColumnAtTen) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-abcdefg", "", "text");
    EXPECT_EQ(Help(syntax, 30), R"(
Optional flags:|
  -abcdefg    text            |
)");
    VoktCommandLineSyntax longer;
    longer.AddFlag("-abcdefgh", "", "text");
    EXPECT_EQ(Help(longer, 30), R"(
Optional flags:|
  -abcdefgh    text           |
)");
}

TEST(CommandLineHelp, ACellWithinTheLimitMakesTheFirstColumnAsWideAsItself) {
    // The limit is 12 of 31, and the cell is 12 wide; one column less and it is wrapped.
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-abc", "-defg", "text");
    EXPECT_EQ(Help(syntax, 31), R"(
Optional flags:|
  -abc (-defg)  text           |
)");
    EXPECT_EQ(Help(syntax, 30), R"(
Optional flags:|
  -abc (-def  text            |
    g)                        |
)");
}

TEST(CommandLineHelp, EveryGroupHasItsHeadingEvenWithoutFlags) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-b", "", "of b", 0, "b");
    syntax.AddFlag("-a", "", "of a", kRequired, "a");
    syntax.AddFlag("-c", "", "plain");
    syntax.AddFlag("-h", "", "hidden", kHidden, "h");
    EXPECT_EQ(Help(syntax, 24), R"(
Required flags:|
|
Required flags for a:|
  -a          of a      |
|
Required flags for b:|
|
Required flags for h:|
Optional flags:|
  -c          plain     |
|
Optional flags for a:|
|
Optional flags for b:|
  -b          of b      |
|
Optional flags for h:|
)");
}

TEST(CommandLineHelp, WithoutAPlainFlagTheFirstHeadingIsThatOfTheFirstGroup) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-b", "", "x", 0, "b");
    EXPECT_EQ(Help(syntax, 20), R"(
Optional flags for b:|
  -b          x     |
)");
}

TEST(CommandLineHelp, HiddenFlagsAreShownOnDemand) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-a", "", "x");
    syntax.AddFlag("-hidden-and-long", "", "y", kHidden);
    EXPECT_EQ(Help(syntax, 30), R"(
Optional flags:|
  -a          x               |
)");
    syntax.SetShowHidden(true);
    EXPECT_EQ(Help(syntax, 50), R"(
Optional flags:|
  -a                  x                           |
  -hidden-and-long    y                           |
)");
}

TEST(CommandLineHelp, ValuesAreDescribedOnDemand) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-a", "", "text");
    syntax.AddFlagArgument(Kind::Integer, "how many");
    syntax.AddFlagArgument(Kind::Float, "how much", "x");
    EXPECT_EQ(Help(syntax, 60), R"(
Optional flags:|
  -a <integer> <x>  text                                    |
)");
    syntax.SetDescribeArguments(true);
    EXPECT_EQ(Help(syntax, 60), R"(
Optional flags:|
  -a <integer> <x>  text                                    |
                    <integer> how many                      |
                    <x> how much                            |
)");
}

TEST(CommandLineHelp, EveryKindHasItsName) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-a", "", "");
    for (const Kind kind : {Kind::Boolean, Kind::Integer, Kind::UnsignedInt, Kind::Float,
                            Kind::String, Kind::InputFilename, Kind::OutputFilename})
        syntax.AddFlagArgument(kind);
    EXPECT_EQ(Help(syntax, 239),
              "\nOptional flags:|\n"
              "  -a <boolean> <integer> <unsigned int> <float> <string> "
              "<filename> <filename>" +
                  std::string(239 - 78, ' ') + "|\n");
}

TEST(CommandLineHelp, PositionalArgumentsComeFirst) {
    VoktCommandLineSyntax syntax;
    syntax.AddArgument(Kind::InputFilename, "what is read", "source");
    syntax.AddArgument(Kind::OutputFilename, "what is written", "", false);
    EXPECT_EQ(Help(syntax, 40), R"(
COMMAND <source> (filename)             |
Arguments:|
  <source>      what is read            |
  (filename)    what is written         |
)");
    syntax.AddFlag("-h", "", "hidden", kHidden);
    EXPECT_EQ(Help(syntax, 40), R"(
COMMAND <source> (filename)             |
Arguments:|
  <source>      what is read            |
  (filename)    what is written         |
)");
    syntax.AddFlag("-r", "", "text", kRequired);
    EXPECT_EQ(Help(syntax, 40), R"(
COMMAND [flags...] <source> (filename)  |
Arguments:|
  <source>      what is read            |
  (filename)    what is written         |
Required flags:|
  -r            text                    |
)");
}

TEST(CommandLineHelp, ASharedFlagStandsWhereItsLastDeclarationPutIt) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-a", "", "first", 4);
    syntax.AddFlag("-b", "", "second");
    syntax.AddFlag("-c", "", "third");
    syntax.AddFlag("-a", "", "other text", 4);
    EXPECT_EQ(Help(syntax, 24), R"(
Optional flags:|
  -c          third     |
  -b          second    |
  -a          first     |
)");
}

TEST(CommandLineHelp, ItEndsInEveryWidthWithAllOfItsText) {
    std::string expected;
    for (int width = 0; width < 140; ++width) {
        std::string text;
        for (const char c : Help(BakerSyntax(), width))
            if (std::string(" |\n").find(c) == std::string::npos) text += c;
        if (width == 0) expected = text;
        // Lines of the two columns take turns, so that the letters differ in order alone.
        EXPECT_EQ(text.size(), expected.size()) << width;
    }
    EXPECT_GT(expected.size(), 1000u);
}
