#pragma once

#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>

#include <cstdint>
#include <string>
#include <vector>

#include "Support/ThrownText.h"

/// Command lines as the tests of their parts write them.
namespace CommandLineTest {

using Kind = VoktArgumentType;
using Words = std::vector<std::string>;

inline void Parse(VoktCommandLineSyntax& syntax, const Words& words) {
    std::vector<const char*> argv{"program"};
    for (const std::string& word : words) argv.push_back(word.c_str());
    syntax.Parse(static_cast<int>(argv.size()), argv.data(), 1);
}

template <class Work>
std::string Failure(Work work) {
    return ThrownText<VoktCommandLineSyntax::Exception>(work);
}

inline std::string ParseFailure(VoktCommandLineSyntax& syntax, const Words& words) {
    return Failure([&] { Parse(syntax, words); });
}

inline std::string ValueOf(const VoktCommandLineSyntax& syntax, const std::string& flag,
                           int argument = 0, int usage = 0) {
    std::string value;
    syntax.GetString(flag, argument, value, usage);
    return value;
}

// One flag "-flag", "-f" with a mandatory value.
inline VoktCommandLineSyntax OneFlag(Kind kind, const std::string& defaultValue = {},
                                     std::uint32_t options = 0) {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-flag", "-f", "help", options);
    syntax.AddFlagArgument(kind, "", "", true, defaultValue);
    return syntax;
}

// The flags over which a user of the tool stumbles.
inline VoktCommandLineSyntax ToolSyntax() {
    VoktCommandLineSyntax syntax;
    syntax.AddFlag("-timetool", "-tt", "");
    syntax.AddFlagArgument(Kind::Boolean, "Whether to print timing info", "", true, "0");
    syntax.AddFlag("-in", "-i", "", VoktCommandLineSyntax::kRequired);
    syntax.AddFlagArgument(Kind::InputFilename);
    syntax.AddFlag("-out", "-o", "", VoktCommandLineSyntax::kRequired);
    syntax.AddFlagArgument(Kind::OutputFilename);
    syntax.AddFlag("-littlesuffix", "-ls", "");
    syntax.AddFlagArgument(Kind::String);
    return syntax;
}

}  // namespace CommandLineTest
