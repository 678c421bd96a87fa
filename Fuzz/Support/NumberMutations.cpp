#include "Support/NumberMutations.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : text + ' ') {
        if (c != ' ' && c != '\n' && c != '\t' && c != '\r') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    return words;
}

std::string Join(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

/// A number as documents hold them.
std::string TypicalNumber(Random& random) {
    static constexpr std::array<std::string_view, 12> kTypical = {
        "0", "1", "-1", "0.5", "2", "1.5", "-0.25", "3.14159274", "10", "1.00000001e-1", "3", "4"};
    return std::string(random.Pick(kTypical));
}

/// The next whole number, up or down: a count that is off by one.
std::string Neighbour(const std::string& number, Random& random) {
    const long value = std::strtol(number.c_str(), nullptr, 10);
    if (value > 1000000 || value < -1000000) return "0";
    return std::to_string(random.OneIn(2) ? value + 1 : value - 1);
}

}  // namespace

std::string OddNumber(Random& random) {
    static constexpr std::array<std::string_view, 28> kOdd = {
        "-0",          "nan",
        "NAN",         "INF",
        "-INF",        "inf",
        "1e38",        "-3.5e38",
        "1e39",        "1e-45",
        "1e-40",       "1e-999",
        "1e999",       "2147483647",
        "2147483648",  "4294967295",
        "-2147483648", "9999999999999",
        "0x10",        "1.5.5",
        "-",           "+1",
        ".5",          "5.",
        "16777217.0",  "1e1000000000",
        "65535",       "340282346638528859811704183484516925440"};
    return std::string(random.Pick(kOdd));
}

bool IsNumbers(const std::string& text) {
    if (text.empty()) return false;
    return text.find_first_not_of("0123456789+-.eE \n\r\t") == std::string::npos;
}

std::string ChangeNumbers(const std::string& text, Random& random) {
    std::vector<std::string> words = Split(text);
    if (words.empty()) return TypicalNumber(random);
    const std::size_t at = random.Below(words.size());
    switch (random.Below(8)) {
        case 0:
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), TypicalNumber(random));
            break;
        case 1:
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
            break;
        case 2:
            words[at] = OddNumber(random);
            break;
        case 3:
            words[at] = Neighbour(words[at], random);
            break;
        case 4:
            words[at] = words[random.Below(words.size())];
            break;
        default:
            words[at] = TypicalNumber(random);
            break;
    }
    return Join(words);
}
