#pragma once

namespace Platform {

enum class StandardStream { kOutput, kErrors };

/// From its making on a lack of memory so complete that no exception can be thrown for it, or one
/// that nobody catches, ends the program with `words` (a whole line, kept by the caller) on that
/// stream and status 1. Nothing unfinished is left. Without this, the language's library aborts. A
/// program has one, made before anything that takes memory.
class EndWhereMemoryDoes {
  public:
    EndWhereMemoryDoes(StandardStream stream, const char* words);
};

}  // namespace Platform
