#include "CommandLineText_win32.h"

namespace Platform {

namespace {

/// The rules by which the run-time libraries of this system read a command line: a quote ends or
/// starts a stretch with blanks, and backslashes in front of a quote are halved.
std::string Quoted(const std::string& word) {
    if (!word.empty() && word.find_first_of(" \t\n\v\"") == std::string::npos) return word;
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"') quoted.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, '\\');
    return quoted + '"';
}

}  // namespace

std::string CommandLineText(const Command& command) {
    std::string text;
    for (const std::string& word : command) {
        if (!text.empty()) text += ' ';
        text += Quoted(word);
    }
    return text;
}

}  // namespace Platform
