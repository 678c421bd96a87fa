#pragma once

#include <bit>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

/// A line of a golden file as words; numbers stand there as the bits of floats, so that comparing
/// texts compares bits.
using GoldenLine = std::vector<std::string>;

/// The lines of a file of Tests/Documents, but for comments and empty ones.
inline std::vector<GoldenLine> ReadGoldenLines(const std::string& name) {
    std::ifstream file(std::string(RIGBAKE_SOURCE_ROOT) + "/Tests/Documents/" + name);
    if (!file) throw std::runtime_error("cannot read " + name);
    std::vector<GoldenLine> lines;
    for (std::string text; std::getline(file, text);) {
        if (text.empty() || text.front() == '#') continue;
        std::istringstream words(text);
        GoldenLine line;
        for (std::string word; words >> word;) line.push_back(word);
        lines.push_back(line);
    }
    return lines;
}

inline float FromBits(const std::string& word) {
    return std::bit_cast<float>(static_cast<std::uint32_t>(std::stoul(word, nullptr, 16)));
}

/// The words of a line from `first` on, as floats.
inline std::vector<float> FromBits(const GoldenLine& line, std::size_t first) {
    std::vector<float> values;
    for (std::size_t i = first; i < line.size(); ++i) values.push_back(FromBits(line[i]));
    return values;
}

/// Every not-a-number is one and the same text.
inline std::string ToBits(float value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const std::uint32_t bits = value != value ? 0x7FC00000u : std::bit_cast<std::uint32_t>(value);
    std::string text;
    for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[bits >> shift & 15];
    return text;
}

/// The words of a line from `first` on, as one text.
inline std::string JoinWords(const GoldenLine& line, std::size_t first) {
    std::string text;
    for (std::size_t i = first; i < line.size(); ++i) text += (i == first ? "" : " ") + line[i];
    return text;
}
