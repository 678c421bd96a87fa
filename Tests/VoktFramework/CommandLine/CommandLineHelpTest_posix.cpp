#include <VoktFramework/CommandLine/VoktCommandLineSyntax.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

#include "Platform/Terminal.h"
#include "Support/StandardOutput.h"

namespace {

std::string Help(const VoktCommandLineSyntax& syntax, int width) {
    std::ostringstream out;
    syntax.PrintHelp(out, width);
    return out.str();
}

}  // namespace

TEST(CommandLineHelp, LeavesTheLastColumnOfTheConsoleFree) {
    VoktCommandLineSyntax syntax;
    std::string words;
    for (int i = 0; i < 40; ++i) words += std::string(1 + i % 4, 'x') + " ";
    syntax.AddFlag("-in", "-i", words);
    const Terminal terminal(97);
    if (terminal.Descriptor() < 0) GTEST_SKIP() << Terminal::kNone;
    std::ostringstream captured;
    {
        const StandardOutput output(terminal.Descriptor());
        std::streambuf* const before = std::cout.rdbuf(captured.rdbuf());
        syntax.PrintHelp();
        std::cout.rdbuf(before);
    }
    EXPECT_EQ(captured.str(), Help(syntax, 96));
    EXPECT_NE(captured.str(), Help(syntax, 95));
    EXPECT_NE(captured.str(), Help(syntax, 97));
}
