#include <Platform/Console.h>

#include "Platform/Terminal.h"
#include "Support/StandardOutput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>

namespace {

/// The width that is told with `terminal` on standard output.
std::optional<int> WidthOn(const Terminal& terminal) {
    const StandardOutput output(terminal.Descriptor());
    return Platform::ConsoleWidth();
}

TEST(ConsoleWidth, IsTheTerminals) {
    const Terminal terminal(120);
    if (terminal.Descriptor() < 0) GTEST_SKIP() << Terminal::kNone;
    EXPECT_EQ(WidthOn(terminal), 120);
}

TEST(ConsoleWidth, IsNothingWhereTheTerminalDoesNotTell) {
    const Terminal terminal(0);
    if (terminal.Descriptor() < 0) GTEST_SKIP() << Terminal::kNone;
    EXPECT_EQ(WidthOn(terminal), std::nullopt);
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
