#include "DependencyFile.h"

#include "FailureText.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

namespace {

// What the two programs that read a rule do with names was tried with both.

/// Make takes ; for a recipe, = for a variable, | for files whose age does not count and * ? [ for
/// the names of other files. At these but for = and [, and at the others, a name ends for Ninja.
constexpr std::string_view kNeverHeld = "\"&'*;<=>?[^`|";
/// Of these a leading ~ is a user's folder. Behind a blank or a backslash the line goes on, a colon
/// is the rule's own, and a parenthesis makes the name one within an archive.
constexpr std::string_view kNeverFirst = "~", kNeverLast = " \\:)";
/// A target with it stands for many.
constexpr std::string_view kNeverInTarget = "%";
/// What is marked by a backslash or a dollar: Make and Ninja count the backslashes in front of it
/// differently.
constexpr std::string_view kNeverBehindBackslash = "#:$";

/// In front of one, a dollar begins what a Makefile that expands names a second time runs.
constexpr std::string_view kNeverBehindDollar = "({";

/// One of these, or one behind another, is the name of a built-in rule of Make's: where no file is
/// called so, Make runs the rule.
constexpr std::string_view kMakesSuffixes[] = {
    ".out",     ".a",    ".ln",     ".o",   ".c",   ".cc",  ".C",    ".cpp", ".p",
    ".f",       ".F",    ".m",      ".r",   ".y",   ".l",   ".ym",   ".yl",  ".lm",
    ".s",       ".S",    ".mod",    ".sym", ".def", ".h",   ".info", ".dvi", ".tex",
    ".texinfo", ".texi", ".txinfo", ".w",   ".ch",  ".web", ".sh",   ".elc", ".el"};

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string CharacterText(char c) {
    return IsControl(c) ? ReadableName({&c, 1}) : std::string("'") + c + "'";
}

/// The name as Make knows it, which takes off each ./ at the front.
std::string_view NameForMake(std::string_view name) {
    while (name.size() > 2 && (name.starts_with("./") || name.starts_with(".\\")))
        name.remove_prefix(std::min(name.find_first_not_of("/\\", 1), name.size()));
    return name;
}

/// The first two begin a variable in front of what a target depends on; a dot and capitals name
/// what Make is to do.
bool IsWordOfMake(std::string_view name) {
    if (name == "define" || name == "undefine") return true;
    return name.size() > 1 && name.front() == '.' &&
           name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_", 1) == std::string_view::npos;
}

bool IsRuleOfMake(std::string_view name) {
    const auto isSuffix = [](std::string_view text) {
        return std::find(std::begin(kMakesSuffixes), std::end(kMakesSuffixes), text) !=
               std::end(kMakesSuffixes);
    };
    if (!name.starts_with('.')) return false;
    const std::size_t second = std::min(name.find('.', 1), name.size());
    return isSuffix(name.substr(0, second)) &&
           (second == name.size() || isSuffix(name.substr(second)));
}

/// Why Make takes a name of innocent characters for something else.
std::optional<std::string> FaultForMake(std::string_view name) {
    if (name.empty()) return "it is empty";
    if (kNeverFirst.find(name.front()) != std::string_view::npos)
        return "it starts with the character " + CharacterText(name.front());
    if (name.starts_with("-l")) return "it starts with -l, as a library does";
    if (IsWordOfMake(name)) return "it is a word of Make's";
    if (IsRuleOfMake(name)) return "it is a rule of Make's";
    return std::nullopt;
}

/// Why no rule holds a name; nothing for one that Make and Ninja see as it is.
std::optional<std::string> FaultOf(const std::string& name, bool isTarget) {
    const auto isOneOf = [](std::string_view characters, char c) {
        return characters.find(c) != std::string_view::npos;
    };
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (IsControl(c) || isOneOf(kNeverHeld, c) || (isTarget && isOneOf(kNeverInTarget, c)))
            return "it has the character " + CharacterText(c);
        if (i > 0 && name[i - 1] == '\\' && isOneOf(kNeverBehindBackslash, c))
            return "it has the character " + CharacterText(c) + " behind a backslash";
        if (i > 0 && name[i - 1] == '$' && isOneOf(kNeverBehindDollar, c))
            return "it has the character " + CharacterText(c) + " behind a dollar";
    }
    if (!name.empty() && isOneOf(kNeverLast, name.back()))
        return "it ends with the character " + CharacterText(name.back());
    return FaultForMake(NameForMake(name));
}

/// A name in a rule. A blank is marked by a backslash, and backslashes in front of one are doubled;
/// other backslashes stand for themselves.
std::string Escape(const std::string& name) {
    std::string text;
    std::size_t backslashes = 0;
    for (const char c : name) {
        if (c == ' ')
            text.append(backslashes + 1, '\\');
        else if (c == '#' || c == ':')
            text += '\\';
        else if (c == '$')
            text += '$';
        text += c;
        backslashes = c == '\\' ? backslashes + 1 : 0;
    }
    return text;
}

}  // namespace

std::string DependencyFileText(const std::string& target, const std::string& document,
                               const std::vector<std::string>& files) {
    const auto take = [&](const std::string& name, bool isTarget) {
        if (const auto fault = FaultOf(name, isTarget))
            throw DocumentFailure({document},
                                  std::string("A rule for Make and Ninja cannot hold ") +
                                      (isTarget ? "the target '" : "the file name '") +
                                      ReadableName(name) + "': " + *fault);
        return Escape(name);
    };
    std::string text = take(target, true) + ": \\\n  " + take(document, false);
    for (const std::string& file : files) text += " \\\n  " + take(file, false);
    return text + "\n";
}
