#include <Platform/Console.h>

#include "Platform/StandardOutput.h"
#include "Platform/Terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>

namespace {

/// The width that is told with a terminal of so many columns on standard output.
std::optional<int> WidthOnTerminal(unsigned short columns) {
    const Terminal terminal(columns);
    EXPECT_GE(terminal.Descriptor(), 0);
    const StandardOutput output(terminal.Descriptor());
    return Platform::ConsoleWidth();
}

TEST(ConsoleWidth, IsTheTerminals) {
    EXPECT_EQ(WidthOnTerminal(120), 120);
}

TEST(ConsoleWidth, IsNothingWhereTheTerminalDoesNotTell) {
    EXPECT_EQ(WidthOnTerminal(0), std::nullopt);
}

TEST(ConsoleWidth, IsNothingWithoutATerminalWhateverTheEnvironmentSays) {
    setenv("COLUMNS", "33", 1);
    const int file = open("/dev/null", O_WRONLY);
    std::optional<int> width;
    {
        const StandardOutput output(file);
        width = Platform::ConsoleWidth();
    }
    close(file);
    EXPECT_EQ(width, std::nullopt);
}

}  // namespace
