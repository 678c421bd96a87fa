#include "DependencyFile.h"

namespace {

/// A name in a rule. A blank is marked by a backslash, and backslashes in front of one are doubled;
/// other backslashes stand for themselves.
std::string Escape(const std::string& name) {
    std::string text;
    std::size_t backslashes = 0;
    for (const char c : name) {
        switch (c) {
            case ' ':
            case '\t':
                text.append(backslashes + 1, '\\');
                break;
            case '#':
            case ':':
                text += '\\';
                break;
            case '$':
                text += '$';
                break;
            default:
                break;
        }
        text += c;
        backslashes = c == '\\' ? backslashes + 1 : 0;
    }
    return text;
}

}  // namespace

std::string DependencyFileText(const std::string& target, const std::vector<std::string>& files) {
    std::string text = Escape(target) + ":";
    for (const std::string& file : files) text += " \\\n  " + Escape(file);
    return text + "\n";
}
