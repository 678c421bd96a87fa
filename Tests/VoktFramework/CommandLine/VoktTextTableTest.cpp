#include <VoktFramework/CommandLine/VoktTextTable.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

// The lines of one row, each with a bar at its end that shows the blanks.
std::string Print(const VoktTextTable& table, std::size_t row = 0) {
    std::ostringstream out;
    table.PrintRow(out, row);
    std::string marked;
    for (const char c : out.str()) marked += c == '\n' ? std::string("|\n") : std::string(1, c);
    return marked;
}

// One cell alone in its table.
std::string Wrap(const std::string& text, int width, int indent = 0) {
    VoktTextTable table(1);
    table.SetWidth(0, width);
    table.SetIndent(0, indent);
    table.SetCell(table.AddRow(), 0, text);
    return Print(table);
}

}  // namespace

TEST(TextTable, AShortTextIsPaddedToTheWidth) {
    EXPECT_EQ(Wrap("one two", 10), "one two   |\n");
}

TEST(TextTable, AnEmptyRowPrintsNothing) {
    EXPECT_EQ(Wrap("", 10), "");
}

TEST(TextTable, ASmallWordGoesToTheNextLine) {
    EXPECT_EQ(Wrap("12345678 abcd", 10), "12345678  |\nabcd      |\n");
}

TEST(TextTable, AWordOfTwoFifthsOfTheColumnIsSmall) {
    // 4 of 10 goes whole, 5 of 11 does not.
    EXPECT_EQ(Wrap("1234567 abcd", 10), "1234567   |\nabcd      |\n");
    EXPECT_EQ(Wrap("1234567 abcde", 11), "1234567 abc|\nde         |\n");
}

TEST(TextTable, ALargeWordIsSplitWhereALineBreakWouldWasteMuch) {
    EXPECT_EQ(Wrap("12 abcdefghijkl", 12), "12 abcdefghi|\njkl         |\n");
}

TEST(TextTable, ALargeWordGoesToTheNextLineWhenLittleRoomIsLeft) {
    // One column of ten is left, then two.
    EXPECT_EQ(Wrap("12345678 abcdef", 10), "12345678  |\nabcdef    |\n");
    EXPECT_EQ(Wrap("1234567 abcdef", 10), "1234567 ab|\ncdef      |\n");
    // Two of twenty is little.
    EXPECT_EQ(Wrap("12345678901234567 abcdefghij", 20),
              "12345678901234567   |\nabcdefghij          |\n");
}

TEST(TextTable, ALargeWordGoesToTheNextLineWhenItIsLittleTooLong) {
    EXPECT_EQ(Wrap("12345 abcde", 10), "12345     |\nabcde     |\n");
    EXPECT_EQ(Wrap("12345 abcdef", 10), "12345 abcd|\nef        |\n");
}

TEST(TextTable, AWordLongerThanTheRoomOfTheNextLineIsSplit) {
    EXPECT_EQ(Wrap("abcdefghijklm", 10), "abcdefghij|\nklm       |\n");
    // Ten fit the column but not a line behind its indent, however small the overhang.
    EXPECT_EQ(Wrap("1 abcdefghi", 10, 2), "1 abcdefgh|\n  i       |\n");
    EXPECT_EQ(Wrap("abcdefghijklmnopqrstu", 10, 2), "abcdefghij|\n  klmnopqr|\n  stu     |\n");
}

TEST(TextTable, TheIndentCountsAgainstTheRoomOfItsLines) {
    // Of eight columns behind the indent, a word one too long moves only where a tenth is one.
    EXPECT_EQ(Wrap("1234 abcdef", 10, 2), "1234 abcde|\n  f       |\n");
}

TEST(TextTable, LinesBehindTheFirstAreIndented) {
    EXPECT_EQ(Wrap("one two six ten", 9, 2), "one two  |\n  six ten|\n");
}

TEST(TextTable, ABlankLeftOverByAFullLineCostsAColumnOfTheNext) {
    // The line is one column shorter: the blank is counted and not printed.
    EXPECT_EQ(Wrap("1234567890 abc", 10), "1234567890|\nabc      |\n");
    EXPECT_EQ(Wrap("1234567890 \t\rabc", 10), "1234567890|\nabc    |\n");
    EXPECT_EQ(Wrap("  abc", 10), "abc     |\n");
    // It also leaves less room: ten are too many for what is left, and get a line of their own.
    EXPECT_EQ(Wrap("1234567890 abcdefghij", 10), "1234567890|\n         |\nabcdefghij|\n");
}

TEST(TextTable, ALineFeedStartsANewLine) {
    EXPECT_EQ(Wrap("one\ntwo", 5), "one  |\ntwo  |\n");
    EXPECT_EQ(Wrap("one\n\ntwo", 5), "one  |\n     |\ntwo  |\n");
}

TEST(TextTable, WhiteSpaceIsPrintedAsBlanks) {
    EXPECT_EQ(Wrap("a\tb\rc  d", 10), "a b c  d  |\n");
}

TEST(TextTable, WhiteSpaceAtTheEndOfAFullLineTakesALineMore) {
    EXPECT_EQ(Wrap("12345 ", 5), "12345|\n    |\n");
}

TEST(TextTable, ColumnsStandSideBySide) {
    VoktTextTable table(4);
    table.SetWidth(0, 2);
    table.SetWidth(1, 6);
    table.SetWidth(2, 2);
    table.SetWidth(3, 8);
    table.SetIndent(1, 2);
    const std::size_t first = table.AddRow();
    table.SetCell(first, 1, "-abcd e");
    table.SetCell(first, 3, "one two three");
    const std::size_t second = table.AddRow();
    table.SetCell(second, 1, "-b");
    table.SetCell(second, 3, "x");
    EXPECT_EQ(Print(table, first), "  -abcd   one two |\n    e     three   |\n");
    EXPECT_EQ(Print(table, second), "  -b      x       |\n");
}

TEST(TextTable, ABlankLeftOverMovesTheColumnsBehindIt) {
    VoktTextTable table(2);
    table.SetWidth(0, 5);
    table.SetWidth(1, 4);
    const std::size_t row = table.AddRow();
    table.SetCell(row, 0, "12345 6");
    table.SetCell(row, 1, "ab\ncd");
    EXPECT_EQ(Print(table, row), "12345ab  |\n6   cd  |\n");
}

TEST(TextTable, TheLongestCellAndTheLongestWordAreMeasured) {
    VoktTextTable table(2);
    EXPECT_EQ(table.LongestCell(0), 0);
    EXPECT_EQ(table.LongestWord(0), 0);
    table.SetCell(table.AddRow(), 0, "-a (b) <c>");
    table.SetCell(table.AddRow(), 0, "-abcd\tef");
    table.SetCell(table.AddRow(), 1, "not in the first column");
    EXPECT_EQ(table.LongestCell(0), 10);
    EXPECT_EQ(table.LongestWord(0), 5);
}

TEST(TextTable, EveryTextEndsInEveryWidth) {
    const std::string text = "word  \n\n longer-than-most \t x\n";
    for (int width = -3; width < 30; ++width) {
        for (int indent = 0; indent < 6; ++indent) {
            std::string printed;
            for (const char c : Wrap(text, width, indent))
                if (std::string(" |\n").find(c) == std::string::npos) printed += c;
            EXPECT_EQ(printed, "wordlonger-than-mostx") << width << " " << indent;
        }
    }
}
