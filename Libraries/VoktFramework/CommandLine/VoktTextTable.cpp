#include <VoktFramework/CommandLine/VoktTextTable.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

// A word goes whole to the next line when it is small against its column, or when little of this
// line, or little of the word, would be gained by splitting it. The limits are single precision
// constants that meet double precision ratios.
constexpr double kSmallWord = static_cast<double>(0.4f);
constexpr double kLittleRoom = static_cast<double>(0.1f);
constexpr double kLittleOver = static_cast<double>(0.1f);

bool IsWhite(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::size_t WordLength(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && !IsWhite(text[end])) ++end;
    return end - at;
}

bool MovesWhole(int length, int left, int width, int indent) {
    const int room = width - indent;
    const int over = length - left;
    if (length > room) return false;
    return static_cast<double>(length) / width <= kSmallWord || left <= room * kLittleRoom ||
           over <= room * kLittleOver;
}

// The layout of one cell, a line at a time.
class Cell {
  public:
    Cell(std::string_view cellText, int columnWidth, int columnIndent)
        : text(cellText), width(std::max(columnWidth, columnIndent + 1)), indent(columnIndent) {}

    bool Done() const { return at == text.size(); }

    void AppendLine(std::string& line, bool first) {
        used = 0;
        if (!Done()) {
            SkipWhite(line);
            if (!first && indent > 0) {
                line.append(static_cast<std::size_t>(indent), ' ');
                used += indent;
            }
            AppendWords(line);
        }
        Pad(line);
    }

  private:
    void Pad(std::string& line) {
        if (used < width) line.append(static_cast<std::size_t>(width - used), ' ');
        used = std::max(used, width);
    }

    // What a line break left over counts against the line without being printed.
    void SkipWhite(std::string& line) {
        for (; !Done() && IsWhite(text[at]); ++at) {
            if (text[at] == '\n') {
                Pad(line);
                used = width;
            } else {
                ++used;
            }
        }
    }

    void AppendWords(std::string& line) {
        while (!Done() && used < width) {
            const std::size_t word = WordLength(text, at);
            const std::size_t left = static_cast<std::size_t>(width - used);
            if (word <= left) {
                Take(line, word);
                AppendWhite(line);
                continue;
            }
            // A word beyond the width is beyond every measure of the rule, so it fits an int here.
            if (word <= static_cast<std::size_t>(width) &&
                MovesWhole(static_cast<int>(word), static_cast<int>(left), width, indent))
                return;
            Take(line, left);
        }
    }

    void AppendWhite(std::string& line) {
        for (; !Done() && IsWhite(text[at]) && used < width; ++at) {
            if (text[at] == '\n') {
                Pad(line);
            } else {
                line += ' ';
                ++used;
            }
        }
    }

    void Take(std::string& line, std::size_t count) {
        line.append(text.substr(at, count));
        at += count;
        used += static_cast<int>(count);
    }

    std::string_view text;
    int width;
    int indent;
    std::size_t at = 0;
    int used = 0;
};

}  // namespace

VoktTextTable::VoktTextTable(std::size_t columnCount) : columns(columnCount) {}

void VoktTextTable::SetIndent(std::size_t column, int indent) {
    columns.at(column).indent = indent;
}

void VoktTextTable::SetWidth(std::size_t column, int width) {
    columns.at(column).width = width;
}

std::size_t VoktTextTable::AddRow() {
    rows.emplace_back(columns.size());
    return rows.size() - 1;
}

void VoktTextTable::SetCell(std::size_t row, std::size_t column, std::string text) {
    rows.at(row).at(column) = std::move(text);
}

int VoktTextTable::LongestCell(std::size_t column) const {
    std::size_t longest = 0;
    for (const auto& row : rows) longest = std::max(longest, row.at(column).size());
    return static_cast<int>(longest);
}

int VoktTextTable::LongestWord(std::size_t column) const {
    std::size_t longest = 0;
    for (const auto& row : rows) {
        const std::string& cell = row.at(column);
        for (std::size_t at = 0; at < cell.size(); ++at) {
            const std::size_t word = WordLength(cell, at);
            longest = std::max(longest, word);
            at += word;
        }
    }
    return static_cast<int>(longest);
}

void VoktTextTable::PrintRow(std::ostream& out, std::size_t row) const {
    std::vector<Cell> cells;
    cells.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        cells.emplace_back(rows.at(row).at(i), columns[i].width, columns[i].indent);

    bool first = true;
    while (!std::all_of(cells.begin(), cells.end(), [](const Cell& cell) { return cell.Done(); })) {
        std::string line;
        for (Cell& cell : cells) cell.AppendLine(line, first);
        out << line << std::endl;
        first = false;
    }
}
