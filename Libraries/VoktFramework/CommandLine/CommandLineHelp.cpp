#include "CommandLine/CommandLineHelp.h"

#include <algorithm>
#include <utility>

namespace {

// The table: a margin, the flags, a gap, the texts.
constexpr std::size_t kColumns = 4;
constexpr std::size_t kMargin = 0;
constexpr std::size_t kFirst = 1;
constexpr std::size_t kGap = 2;
constexpr std::size_t kText = 3;

constexpr int kMarginWidth = 2;
constexpr int kGapWidth = 2;
constexpr int kContinuationIndent = 2;
constexpr int kLeastFirstWidth = 10;
constexpr int kShortWord = 8;

std::string Bracketed(const VoktCommandLineArgument& argument) {
    const std::string name = argument.DisplayName();
    return argument.optional ? "(" + name + ")" : "<" + name + ">";
}

}  // namespace

CommandLineHelp::CommandLineHelp(std::ostream& stream, int totalWidth)
    : out(stream), width(totalWidth), table(kColumns) {
    table.SetIndent(kFirst, kContinuationIndent);
}

std::size_t CommandLineHelp::AddRow(std::string first, std::string text) {
    const std::size_t row = table.AddRow();
    table.SetCell(row, kFirst, std::move(first));
    table.SetCell(row, kText, std::move(text));
    return row;
}

void CommandLineHelp::AddArguments(const std::vector<VoktCommandLineArgument>& arguments,
                                   bool anyFlagShown) {
    if (arguments.empty()) return;
    std::string usage = "COMMAND ";
    if (anyFlagShown) usage += "[flags...] ";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (i != 0) usage += " ";
        usage += Bracketed(arguments[i]);
        argumentRows.push_back(AddRow(Bracketed(arguments[i]), arguments[i].description));
    }
    VoktTextTable line(1);
    line.SetWidth(0, width);
    line.SetCell(line.AddRow(), 0, usage);
    line.PrintRow(out, 0);
}

void CommandLineHelp::AddFlags(const std::vector<VoktCommandLineFlag>& flags, bool showHidden,
                               bool describeArguments) {
    // A hidden flag's group has its heading all the same.
    for (const VoktCommandLineFlag& flag : flags) groups[flag.group];
    for (const bool required : {true, false})
        for (const VoktCommandLineFlag& flag : flags)
            if (flag.required == required && (!flag.hidden || showHidden))
                AddFlag(flag, describeArguments);
}

void CommandLineHelp::AddFlag(const VoktCommandLineFlag& flag, bool describeArguments) {
    std::string first = flag.name;
    if (!flag.name.empty() && !flag.shortName.empty()) first += " (" + flag.shortName + ")";
    std::string text = flag.help;
    for (const VoktCommandLineArgument& argument : flag.arguments) {
        const std::string name = "<" + argument.DisplayName() + ">";
        first += " " + name;
        if (describeArguments) text += "\n" + name + " " + argument.description;
    }
    Group& group = groups[flag.group];
    (flag.required ? group.required : group.optional)
        .push_back(AddRow(std::move(first), std::move(text)));
}

void CommandLineHelp::LayOut() {
    // Three eighths of the console's whole width, of which one column is not used.
    const int maxFlagColumn = ((width + 1) * 30) / 80;
    const int longest = table.LongestCell(kFirst);
    const int word = table.LongestWord(kFirst);
    int firstWidth = kLeastFirstWidth;
    if (word > kShortWord) firstWidth = std::min(word + 2, maxFlagColumn);
    if (firstWidth < longest && longest <= maxFlagColumn) firstWidth = longest;
    table.SetWidth(kMargin, kMarginWidth);
    table.SetWidth(kFirst, firstWidth);
    table.SetWidth(kGap, kGapWidth);
    table.SetWidth(kText, width - firstWidth - kMarginWidth - kGapWidth);
}

void CommandLineHelp::Print() {
    LayOut();
    PrintArguments();
    PrintGroups(&Group::required, "Required");
    PrintGroups(&Group::optional, "Optional");
}

void CommandLineHelp::PrintArguments() {
    if (argumentRows.empty()) return;
    out << "Arguments:" << std::endl;
    for (const std::size_t row : argumentRows) table.PrintRow(out, row);
}

void CommandLineHelp::PrintGroups(GroupRows rows, const char* kind) {
    const bool any = std::any_of(groups.begin(), groups.end(),
                                 [&](const auto& entry) { return !(entry.second.*rows).empty(); });
    if (!any) return;
    bool first = true;
    for (const auto& [name, group] : groups) {
        if (!first) out << std::endl;
        first = false;
        out << kind << (name.empty() ? " flags:" : " flags for " + name + ":") << std::endl;
        for (const std::size_t row : group.*rows) table.PrintRow(out, row);
    }
}
