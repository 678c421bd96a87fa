#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/// A table of text whose cells are wrapped to the width of their columns, word by word; long words
/// are broken where a line break would waste much of a line. Line feeds in a cell start a new line.
/// Bytes count as columns.
class VoktTextTable {
  public:
    explicit VoktTextTable(std::size_t columnCount);

    /// How far the lines of a cell behind its first are indented; 0 at first.
    void SetIndent(std::size_t column, int indent);
    /// A column that has no room for one character behind its indent is laid out as if it had, so
    /// that every row ends.
    void SetWidth(std::size_t column, int width);

    /// Adds a row of empty cells and returns its index.
    std::size_t AddRow();
    void SetCell(std::size_t row, std::size_t column, std::string text);

    /// The length of the longest cell of a column.
    int LongestCell(std::size_t column) const;
    /// The length of the longest word in a column's cells.
    int LongestWord(std::size_t column) const;

    /// Prints one row, each line padded with blanks to the full width. A row of empty cells prints
    /// nothing.
    void PrintRow(std::ostream& out, std::size_t row) const;

  private:
    struct Column {
        int width = 0;
        int indent = 0;
    };
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
};
