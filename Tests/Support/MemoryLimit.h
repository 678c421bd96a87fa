#pragma once

#include <cstddef>

/// Lets this process and its children take no more memory than this, so that a test of
/// runaway memory fails instead of taking the machine along. 0 sets no limit.
void LimitMemory(std::size_t megabytes);

/// In front of a shell's command, takes the limit off again: sanitizers and browsers reserve more
/// than they use.
inline constexpr const char* kShellWithoutLimit = "ulimit -S -d $(ulimit -H -d); ";
