#include <Platform/Console.h>

#include "Platform/StandardOutput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/ioctl.h>

namespace {

/// The width that is told with a terminal of so many columns on standard output.
std::optional<int> WidthOnTerminal(unsigned short columns) {
    const int controller = posix_openpt(O_RDWR | O_NOCTTY);
    EXPECT_EQ(grantpt(controller), 0);
    EXPECT_EQ(unlockpt(controller), 0);
    const int terminal = open(ptsname(controller), O_RDWR | O_NOCTTY);
    EXPECT_GE(terminal, 0);
    winsize size{};
    size.ws_col = columns;
    ioctl(terminal, TIOCSWINSZ, &size);
    std::optional<int> width;
    {
        const StandardOutput output(terminal);
        width = Platform::ConsoleWidth();
    }
    close(terminal);
    close(controller);
    return width;
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
