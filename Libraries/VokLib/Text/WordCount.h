#pragma once

#include <cstddef>

namespace VokNumberText {

/// Counts the words of a text that comes in pieces; a piece may end in the middle of a word.
class WordCount {
  public:
    void Add(const char* bytes, std::size_t length);
    std::size_t Get() const { return words; }

  private:
    std::size_t words = 0;
    bool inWord = false;  // at the end of the last piece
};

/// Moves `cursor`, which does not stand within a word, behind up to `wanted` words; returns how
/// many there were.
std::size_t SkipWords(const char*& cursor, const char* end, std::size_t wanted);

}  // namespace VokNumberText
