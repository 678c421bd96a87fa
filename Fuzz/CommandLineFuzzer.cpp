// The baker's command line, one word a line, and one that the input declares itself: what is
// accepted keeps the rules of its declaration, and the same words are always read alike.

#include "VoktRigbakeTool.h"

#include <QelTools/AsciiText.h>
#include <VokLib/Library/VokLib.h>
#include <VoktFramework/Errors/VoktErrorHandler.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "CommandLineFuzzer: %s\n", what.c_str());
    std::abort();
}

/// The baker as far as its flags.
class FlagsOfTool : public VoktRigbakeTool {
  public:
    FlagsOfTool() {
        AddComponents();
        DefineFlags();
    }
    VoktCommandLineSyntax& GetSyntax() { return syntax; }
    void ReadAll() { ReadFlags(); }
};

struct Flag {
    const char* name;
    const char* shortName;
    int values;
};

constexpr Flag kFlags[] = {
    {"-timetool", "-tt", 1},
    {"-logfile", "-log", 1},
    {"-in", "-i", 1},
    {"-autoupdate", "-au", 1},
    {"-verboseload", "-vl", 0},
    {"-quietload", "-ql", 0},
    {"-multiRoot", "-mr", 0},
    {"-changeUpAxis", "-cua", 1},
    {"-changeUpAxisAnimation", "-cuaa", 1},
    {"-verboseSkeleton", "-vs", 0},
    {"-outputDrivenKeys", "-odk", 1},
    {"-outputJointConstraints", "-ojc", 1},
    {"-debugDependencies", "", 0},
    {"-out", "-o", 1},
    {"-littleendian", "-le", 0},
    {"-bigendian", "-be", 0},
    {"-bothendian", "-ble", 0},
    {"-littlesuffix", "-ls", 1},
    {"-bigsuffix", "-bs", 1},
    {"-forceWrite", "-fw", 1},
};

/// "" for a line that is accepted, else the words of its refusal.
std::string Parse(VoktCommandLineSyntax& syntax, const Words& words) {
    std::vector<const char*> arguments = {"rigbake"};
    for (const std::string& word : words) arguments.push_back(word.c_str());
    try {
        syntax.Parse(static_cast<int>(arguments.size()), arguments.data(), 1);
        return "";
    } catch (const VoktCommandLineSyntax::Exception& failure) {
        if (*failure.what() == '\0') Fail("refused without a word");
        return failure.what();
    }
}

/// The values of every flag as the components ask for them.
Words ReadValues(const VoktCommandLineSyntax& syntax) {
    Words values;
    for (const Flag& flag : kFlags) {
        std::string value = std::to_string(syntax.UsageCount(flag.name));
        if (flag.values != 0) syntax.GetString(flag.name, 0, value);
        values.push_back(value);
        if (*flag.shortName != '\0' &&
            syntax.UsageCount(flag.shortName) != syntax.UsageCount(flag.name))
            Fail(std::string("two counts of ") + flag.name);
    }
    return values;
}

void CheckAccepted(const VoktCommandLineSyntax& syntax, const Words& words) {
    std::size_t told = 0;
    for (const Flag& flag : kFlags) {
        const int count = syntax.UsageCount(flag.name);
        if (count > 1) Fail(std::string("used twice: ") + flag.name);
        told += static_cast<std::size_t>(count) * static_cast<std::size_t>(1 + flag.values);
        std::string value;
        if (flag.values != 0) syntax.GetString(flag.name, 0, value);
        const bool isTold = std::find(words.begin(), words.end(), value) != words.end();
        if (count == 1 && flag.values != 0 && !isTold) Fail("a value from nowhere: " + value);
    }
    if (told != words.size()) Fail("a word was passed over");
    if (!syntax.IsSet("-in") || !syntax.IsSet("-out")) Fail("a required flag is not there");
    std::string in;
    std::string out;
    syntax.GetString("-in", 0, in);
    syntax.GetString("-out", 0, out);
    if (in == out) Fail("the output is the input: " + in);
}

void CheckBaker(const Words& words) {
    const VoktErrorHandler handler;  // where components tell what they may report
    FlagsOfTool tool;
    const std::string first = Parse(tool.GetSyntax(), words);
    const Words values = ReadValues(tool.GetSyntax());
    const std::string second = Parse(tool.GetSyntax(), words);
    if (first != second) Fail("two answers: " + first + " and " + second);
    if (values != ReadValues(tool.GetSyntax())) Fail("two readings");
    if (!first.empty()) return;
    CheckAccepted(tool.GetSyntax(), words);
    try {
        tool.ReadAll();
    } catch (const std::exception& failure) {
        if (*failure.what() == '\0') Fail("flags refused without a word");
    }
}

/// Declares a flag as `line` tells: its options' letter, its values' letters, its name.
void Declare(VoktCommandLineSyntax& syntax, const std::string& line) {
    const auto options = static_cast<std::uint32_t>(static_cast<unsigned char>(line[0]) % 16);
    const std::size_t values = static_cast<unsigned char>(line[1]) % 4;
    const std::string name = line.substr(2);
    if (static_cast<unsigned char>(line[0]) >= 'p') {
        const auto type = static_cast<VoktArgumentType>(values);
        syntax.AddArgument(type, name, name, options % 2 != 0, name);
        return;
    }
    syntax.AddFlag(name, name.substr(0, name.size() / 2), name, options, line.substr(0, 1));
    for (std::size_t i = 0; i < values; ++i)
        syntax.AddFlagArgument(static_cast<VoktArgumentType>((i + options) % 5), name, name,
                               i + 1 < values, name);
    if (options == 7) syntax.SetAttachedValue(true);
}

void CheckDeclared(const Words& lines) {
    const auto gap = std::find(lines.begin(), lines.end(), "");
    VoktCommandLineSyntax syntax;
    try {
        for (auto line = lines.begin(); line != gap; ++line)
            if (line->size() >= 2) Declare(syntax, *line);
        syntax.CheckFlagDefinitions();
    } catch (const VoktCommandLineSyntax::Exception&) {
        return;
    }
    for (const int width : {1, 20, VoktCommandLineSyntax::kDefaultWidth}) {
        std::ostringstream help;
        syntax.PrintHelp(help, width);
    }
    const Words words(gap == lines.end() ? gap : gap + 1, lines.end());
    const std::string first = Parse(syntax, words);
    if (first != Parse(syntax, words)) Fail("two answers: " + first);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const VokLib library(true, true, true, true, true);
    if (size == 0) return 0;
    const bool isDeclared = data[0] == '*';
    std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
    Words lines;
    for (std::string line; lines.size() < 60 && std::getline(text, line);)
        lines.push_back(line.substr(0, line.find('\0')));
    if (!isDeclared) {
        CheckBaker(lines);
        return 0;
    }
    lines.erase(lines.begin());
    CheckDeclared(lines);
    return 0;
}
