#pragma once

#include <optional>

namespace Platform {

/// The width in columns of the terminal on standard output; nothing when standard output is no
/// terminal or the terminal does not tell.
std::optional<int> ConsoleWidth();

}  // namespace Platform
